// Keeps the shared container for this monitor alone, from the first moment to the last: makes it,
// locks other monitors out, clears away what one left that was killed, and makes it anew when
// somebody removes it or puts another folder in its place.
//
//     ContainerKeeper keeper(directories.stateHome);
//     if (!keeper.isOurs())
//         return; // another monitor runs
//     keeper.start({.remade = [&] { publishAll(); }, .lost = [&] { quit(); }});
//     keeper.writer().replace("ports.json", text);
#pragma once

#include "background_monitor/container_writer.h"
#include "background_monitor/instance_lock.h"

#include <QFileSystemWatcher>
#include <QString>

#include <functional>
#include <string>

namespace zenlot {

class ContainerKeeper {
  public:
    struct Handlers {
        std::function<void()> remade; // files are missing that were there
        std::function<void()> lost;   // another monitor has it now, and nothing may be written
    };

    // Begins with an empty list of ports: what an earlier monitor may have left is nobody's.
    explicit ContainerKeeper(const QString& stateHome,
                             InstanceLock::Patience patience = InstanceLock::Patience::none);

    bool isOurs() const { return lock_.isOurs(); }
    const ContainerWriter& writer() const { return writer_; }

    // Calls the handlers from now on, from the event loop or from check().
    void start(Handlers handlers);

    // Looks after the container now. What happens to it is noticed by itself in most cases.
    void check();

  private:
    std::string lockPath() const;
    void watch();

    ContainerWriter writer_;
    InstanceLock lock_;
    QFileSystemWatcher watcher_;
    Handlers handlers_;
};

} // namespace zenlot
