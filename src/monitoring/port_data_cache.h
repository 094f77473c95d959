// Follows the list of ports that the background monitor publishes: loads it at the start and on
// every signal into the shared cache, and tells the rest of the program by portsUpdated().
//
// Operations, handlers and posts belong to the main thread; files are read and decoded elsewhere.
// A file that is missing or wrong changes nothing and says nothing; the cache keeps what it has.
//
//     PortDataCache cache(SharedContainer(stateHome), sharedPorts, broadcasts, notifications,
//     reader); cache.start();
#pragma once

#include "inventory/occupied_port.h"
#include "inventory/shared_port_cache.h"
#include "monitoring/notification_center.h"
#include "monitoring/shared_container.h"
#include "platform/broadcast_center.h"
#include "workers/worker_threads.h"

#include <QFutureWatcher>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

class PortDataCache final : public QObject {
  public:
    // Too short to be noticed, long enough that signals in a burst share a load.
    static constexpr std::chrono::milliseconds kPauseBetweenLoads{50};

    // The references must outlive the object.
    PortDataCache(SharedContainer container, SharedPortCache& sharedPortCache,
                  BroadcastCenter& broadcasts, NotificationCenter& notifications,
                  WorkerThreads& reader,
                  std::chrono::milliseconds pauseBetweenLoads = kPauseBetweenLoads,
                  QObject* parent = nullptr);

    // Follows the monitor from now on. Further calls do nothing.
    void start();

    // Loads the list once more. Only one load runs at a time and the next one begins a pause after
    // it, so that a burst of calls costs few loads; but the file is always read after the last
    // call, and what was read last is what stays.
    void loadPorts();

  private:
    using Ports = std::optional<std::vector<OccupiedPort>>;

    // A load has the phase of its own until its result is taken over, not only while it runs.
    enum class Phase : std::uint8_t { idle, loading, pausing };

    void beginLoad();
    void finishLoad();
    void finishPause();

    SharedContainer container_;
    SharedPortCache& sharedPortCache_;
    BroadcastCenter& broadcasts_;
    NotificationCenter& notifications_;
    WorkerThreads& reader_;
    QFutureWatcher<Ports> load_;
    QTimer pause_;
    Phase phase_{Phase::idle};
    bool isLoadWanted_{false}; // since the load of this phase began
    bool isStarted_{false};
};

} // namespace zenlot
