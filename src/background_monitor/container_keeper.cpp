#include "background_monitor/container_keeper.h"

#include "monitoring/shared_container.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace zenlot {

ContainerKeeper::ContainerKeeper(const QString& stateHome, InstanceLock::Patience patience)
    : writer_(stateHome), lock_(lockPath(), patience) {
    if (!isOurs())
        return;
    writer_.sweep();
    writer_.replace(std::string(kPortsFile), "[]");
}

void ContainerKeeper::start(Handlers handlers) {
    handlers_ = std::move(handlers);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                     [this] { check(); });
    watch();
}

void ContainerKeeper::check() {
    if (!isOurs())
        return;
    if (!lock_.isInPlace()) {
        writer_.make();
        lock_ = InstanceLock(lockPath());
        if (!isOurs()) {
            handlers_.lost();
            return;
        }
        watch();
        handlers_.remade();
    } else if (!QFile::exists(QFile::decodeName(writer_.path(std::string(kPortsFile)).c_str()))) {
        handlers_.remade();
    }
}

// The folder above tells when this one is moved away.
void ContainerKeeper::watch() {
    const QString folder = QFile::decodeName(writer_.folder().c_str());
    if (const QStringList before = watcher_.directories(); !before.isEmpty())
        watcher_.removePaths(before);
    watcher_.addPaths({folder, QFileInfo(folder).path()});
}

std::string ContainerKeeper::lockPath() const {
    return writer_.path(std::string(kMonitorLockFile));
}

} // namespace zenlot
