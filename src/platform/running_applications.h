// The applications of the desktop that run now: which one, if any, a process is.
//
// A process is an application when it runs the program that the application was installed with. A
// shell or a server that somebody started in a terminal is neither the terminal nor an application.
//
// Any thread may ask, several at once. An answer reads what the system says of the process and may
// read installed files, some tens of microseconds when nothing was installed since: ask on a worker
// thread, never between frames.
//
//     if (auto application = applications.applicationWithPid(4711))
//         show(application->iconName);
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace zenlot {

struct RunningApplication {
    std::optional<QString> bundleIdentifier; // such as "org.gnome.TextEditor"
    std::optional<QString> bundlePath;       // the application bundle that holds the program
    std::optional<QString> executablePath;   // absolute
    QString iconName;             // in the icon theme, or an absolute path; empty when it has none
    bool isBackgroundOnly{false}; // never shown to the user among the applications

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

// The application that a process is a part of, for which several processes may stand.
struct OwningApplication {
    QString key; // the same for all of its processes, and for no other's
    QString name;
    QString icon; // as RunningApplication::iconName

    friend bool operator==(const OwningApplication&, const OwningApplication&) = default;
};

class RunningApplications {
  public:
    RunningApplications() = default;
    RunningApplications(const RunningApplications&) = delete;
    RunningApplications& operator=(const RunningApplications&) = delete;
    virtual ~RunningApplications() = default;

    // None for a process that is gone, that may not be inspected, or that is no application.
    virtual std::optional<RunningApplication> applicationWithPid(qint64 pid) const = 0;

    // Also for the helpers of an application. None for what somebody started from within it, as in
    // the terminal of an editor.
    virtual std::optional<OwningApplication> applicationOwning(qint64 pid) const = 0;
};

} // namespace zenlot
