// The port inventory for the main thread: every question runs on a worker thread and comes back as
// a future.
//
//     const std::vector<PortProcess> owners = co_await inventory.processesOnPort(8080);
//
// Nothing here fails; see PortScanner, processesOnPort, lookAtProcess and forceQuitProcess for what
// the answers mean. The destructor waits for the questions that are still open, since they use the
// collaborators.
#pragma once

#include "inventory/force_quit.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/port_lookup.h"
#include "inventory/port_scanner.h"
#include "inventory/port_services.h"
#include "inventory/repeated_port_scan.h"
#include "inventory/shared_port_cache.h"
#include "workers/worker_threads.h"

#include <QFuture>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace zenlot {

class PortInventory final {
  public:
    // They must outlive the object. Without `services` no row names one; without `origins` no
    // origin has anything in it.
    PortInventory(const PortScanner& scanner, const SharedPortCache& sharedPortCache,
                  const ProcessPinner& processes, const PortServices* services = nullptr,
                  const OriginCollector* origins = nullptr);

    // All ports, merged with what the background monitor last published. Who asks again pays for
    // what has changed; see RepeatedPortScan for how long a change of owner may stay unseen.
    QFuture<std::vector<OccupiedPort>> listMergedPorts();

    // Of the same merged ports those of the current user; several entries for one port keep their
    // order. For polls: while nothing changes, it costs next to nothing and gives the list of
    // before. See RepeatedPortScan for how long a change of owner may stay unseen. Never null.
    QFuture<SharedPorts> pollPortsOfCurrentUser();

    // Each row knows whether its process may be ended, and else to what it belongs. When neither
    // the scan nor a look at the process tells that it is the one that the published list means, it
    // may not.
    QFuture<std::vector<PortProcess>> processesOnPort(std::int64_t port);

    // What `add` collects from the rows' origins, of which there is one for each row, in their
    // order; see OriginCollector. Both have a thread of their own, since the folders of projects
    // may lie in a network.
    template <typename Result>
    QFuture<Result> readOrigins(std::vector<PortOwner> rows,
                                std::function<void(Result&, std::size_t row, const Origin&)> add) {
        return originWorker_.run([this, rows = std::move(rows), add = std::move(add)] {
            Result result;
            std::size_t row = 0;
            if (origins_)
                origins_->readOrigins(rows,
                                      [&](const Origin& origin) { add(result, row++, origin); });
            return result;
        });
    }

    // What stands against a server on a port that nobody listens on; see bind_obstacle.h.
    QFuture<std::vector<BindObstacle>> obstaclesOnPort(std::uint16_t port);

    // One sighting for each target, in their order.
    QFuture<std::vector<ProcessSighting>> lookAtProcesses(std::vector<ForceQuitTarget> targets);

    QFuture<bool> forceQuitProcess(const ForceQuitTarget& target);

  private:
    // What the last poll made, and of what.
    struct Poll {
        SharedPorts scanned;
        SharedPorts published;
        SharedPorts ofCurrentUser;
    };

    SharedPorts portsOfCurrentUser();
    std::vector<OccupiedPort> probePublishedPorts(const std::vector<OccupiedPort>& published,
                                                  const std::vector<AddressFamily>& families) const;

    const PortScanner& scanner_;
    const SharedPortCache& sharedPortCache_;
    const ProcessPinner& processes_;
    const PortServices* services_;
    const OriginCollector* origins_;
    RepeatedPortScan repeatedScan_;
    std::mutex lastPollMutex_;
    Poll lastPoll_;
    // The last members, so that they end before what their work uses.
    WorkerThreads originWorker_{1};
    WorkerThreads workers_;
};

} // namespace zenlot
