// Running applications by the entries of the desktop's menus.
//
// A process is the application of an entry when its executable really is the entry's program, with
// symbolic links followed: the program of Exec or of TryExec. The systemd unit of the process tells
// which of several entries with the same program it is; without one, entries in menus go first.
// An entry that hands its program something to run (a script, an archive) counts only when the unit
// names it. Entries of console programs don't count at all. The executables of other users can't be
// read, and those of sandboxes and start scripts are not the entry's program: no application.
//
// A process is a part of an application in one of these ways, of which the first counts:
//
//     Flatpak   what runs the package's own programs, or has no terminal, in a scope of the package
//     Snap      the same of a snap
//     AppImage  its program lies in the mounted image
//     entry     it is the application of an entry
//     folder    its program lies in a folder of a package's own, /opt/NAME
//     ancestor  one of its ancestors is the application of an entry, in the same application scope
//               and in the same session of processes: a terminal begins a new one for what it runs
//
// bundleIdentifier is the identifier of the entry, iconName its icon; entries outside the menus are
// background-only. There are no bundles.
//
// Any thread may ask. An answer reads two files of /proc and looks at the folders with entries; the
// entries themselves are read again only after such a folder has changed. Then that takes some ten
// milliseconds, during which others who ask wait.
#pragma once

#include "platform/linux/desktop_entry.h"
#include "platform/running_applications.h"

#include <QStringList>

#include <memory>
#include <mutex>

namespace zenlot {

class DesktopRunningApplications final : public RunningApplications {
  public:
    // Entries lie in "applications" below each data directory, those of the first directory first.
    // Programs without a path are looked for in the program directories.
    DesktopRunningApplications(QStringList dataDirectories, QStringList programDirectories,
                               QString procRoot = QStringLiteral("/proc"));
    ~DesktopRunningApplications() override;

    std::optional<RunningApplication> applicationWithPid(qint64 pid) const override;
    std::optional<OwningApplication> applicationOwning(qint64 pid) const override;

  private:
    struct Index;
    struct Process;

    std::shared_ptr<const Index> currentIndex() const;
    std::optional<Process> process(qint64 pid) const;

    QStringList dataDirectories_;
    QStringList programDirectories_;
    QString procRoot_;
    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Index> index_; // guarded by the mutex
};

} // namespace zenlot
