#include "monitoring/port_data_cache.h"

#include "monitoring/broadcast_names.h"
#include "monitoring/published_ports.h"

#include <QThread>

#include <utility>

namespace zenlot {

PortDataCache::PortDataCache(SharedContainer container, SharedPortCache& sharedPortCache,
                             BroadcastCenter& broadcasts, NotificationCenter& notifications,
                             WorkerThreads& reader, std::chrono::milliseconds pauseBetweenLoads,
                             QObject* parent)
    : QObject(parent), container_(std::move(container)), sharedPortCache_(sharedPortCache),
      broadcasts_(broadcasts), notifications_(notifications), reader_(reader) {
    pause_.setSingleShot(true);
    pause_.setInterval(pauseBetweenLoads);
    connect(&pause_, &QTimer::timeout, this, &PortDataCache::finishPause);
    connect(&load_, &QFutureWatcher<Ports>::finished, this, &PortDataCache::finishLoad);
}

void PortDataCache::start() {
    if (isStarted_)
        return;
    isStarted_ = true;
    broadcasts_.observe(kPortsUpdatedBroadcast, BroadcastCenter::Meaning::readAnew, this,
                        [this](const QString&) { loadPorts(); });
    loadPorts();
}

void PortDataCache::loadPorts() {
    Q_ASSERT(QThread::currentThread() == thread());
    if (phase_ == Phase::idle)
        beginLoad();
    else
        isLoadWanted_ = true;
}

void PortDataCache::beginLoad() {
    phase_ = Phase::loading;
    // The task has a container of its own, so it may outlive this object.
    load_.setFuture(
        reader_.run([container = container_] { return readPublishedPorts(container); }));
}

void PortDataCache::finishLoad() {
    phase_ = Phase::pausing;
    pause_.start();
    Ports ports = load_.future().takeResult();
    if (!ports)
        return;
    sharedPortCache_.replace(*std::move(ports));
    Q_EMIT notifications_.portsUpdated(); // whose handlers may destroy this object
}

void PortDataCache::finishPause() {
    phase_ = Phase::idle;
    if (std::exchange(isLoadWanted_, false))
        beginLoad();
}

} // namespace zenlot
