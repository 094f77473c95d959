// zenlot-poll-probe: what it costs to watch for new listeners. It polls as the port monitor does,
// and at its pace, since whatever comes only every few seconds finds the processor's caches cold.
//
//     zenlot-poll-probe SECONDS
//
// The first polls, which walk because every process is new, are not measured. Then a line is
// printed for everything that was done: what, CPU time (user and system, all threads) and wall
// time, both in microseconds.
//
//     poll    a poll that found the sockets of the poll before
//     walk    a poll that walked over the processes
//     all     SECONDS of polls with the pauses between them
//     origins a scan, and then the origins of all that it found
//     scan    a scan, for comparison, with as many threads as there are processors
//
// The exit status is 1 when no two polls in a row found the same sockets.
#include "inventory/linux/linux_origin_sources.h"
#include "inventory/linux/linux_process_pinner.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/processors.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/port_lookup.h"
#include "inventory/port_scanner.h"
#include "inventory/shared_port_cache.h"
#include "monitoring/port_inventory.h"
#include "monitoring/port_monitor.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using Microseconds = std::chrono::microseconds;

constexpr int kPolls = 10; // until it is settled
constexpr int kScans = 15;

Microseconds processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::duration_cast<Microseconds>(std::chrono::seconds(time.tv_sec) +
                                                    std::chrono::nanoseconds(time.tv_nsec));
}

// Measures from its making on.
class Meter {
  public:
    void print(const char* what) const {
        const auto wall =
            std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - wall_);
        std::printf("%s %lld %lld\n", what,
                    static_cast<long long>((processorTime() - processor_).count()),
                    static_cast<long long>(wall.count()));
    }

  private:
    Microseconds processor_{processorTime()};
    std::chrono::steady_clock::time_point wall_{std::chrono::steady_clock::now()};
};

bool run(std::chrono::seconds duration) {
    const LinuxProcessTables tables;
    const LinuxProcessPinner pinner;
    const SharedPortCache nothingPublished;
    const PortScanner scanner(tables, isPortInUse, availableProcessors());
    PortInventory inventory(scanner, nothingPublished, pinner);

    SharedPorts last;
    const auto poll = [&inventory, &last] {
        std::this_thread::sleep_for(PortMonitor::kPauseBetweenPolls);
        const Meter meter;
        const SharedPorts before =
            std::exchange(last, inventory.pollPortsOfCurrentUser().takeResult());
        return std::pair(last == before, meter);
    };
    for (int polls = 0; !poll().first; ++polls) {
        if (polls == kPolls)
            return false;
    }

    const Meter all;
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end) {
        const auto [isUnchanged, meter] = poll();
        meter.print(isUnchanged ? "poll" : "walk");
    }
    all.print("all");

    // In turn, so that whatever else the machine does slows both.
    for (int scans = 0; scans < kScans; ++scans) {
        std::this_thread::sleep_for(1s);
        const Meter scan;
        scanner.listOccupiedPorts();
        scan.print("scan");
        std::this_thread::sleep_for(1s);
        const LinuxOriginSources sources;
        const Meter origins;
        std::vector<PortOwner> rows;
        for (const OccupiedPort& port : scanner.listOccupiedPorts())
            rows.push_back({static_cast<std::uint16_t>(port.port), {port.pid, port.startTime}});
        OriginCollector(sources).readOrigins(rows, [](const Origin&) {});
        origins.print("origins");
    }
    return true;
}

} // namespace
} // namespace zenlot

int main(int argumentCount, char** arguments) {
    const long seconds = argumentCount == 2 ? std::strtol(arguments[1], nullptr, 10) : 0;
    if (seconds <= 0) {
        std::fputs("usage: zenlot-poll-probe SECONDS\n", stderr);
        return 2;
    }
    return zenlot::run(std::chrono::seconds(seconds)) ? 0 : 1;
}
