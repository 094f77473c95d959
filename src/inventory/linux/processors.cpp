#include "inventory/linux/processors.h"

#include <sched.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <thread>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

// Threads of a walk wait for each other in the kernel; more of them only cost.
constexpr unsigned kMostProcessors = 8;

unsigned processorsOfAffinity() {
    cpu_set_t processors;
    // Fails on machines with more processors than the set holds.
    if (::sched_getaffinity(0, sizeof processors, &processors) == 0)
        return static_cast<unsigned>(CPU_COUNT(&processors));
    return std::thread::hardware_concurrency();
}

// Time of processors in a time on the clock. No limit is written as "max" or as a negative number.
std::optional<double> quotaIn(std::istream& quotaText, std::istream& periodText) {
    double quota = 0;
    double period = 0;
    if (!(quotaText >> quota && periodText >> period) || quota <= 0 || period <= 0)
        return std::nullopt;
    return quota / period;
}

std::optional<double> quotaOfGroup(const fs::path& folder) {
    if (std::ifstream both(folder / "cpu.max"); both)
        return quotaIn(both, both);
    std::ifstream quota(folder / "cpu.cfs_quota_us");
    std::ifstream period(folder / "cpu.cfs_period_us");
    return quotaIn(quota, period);
}

// A comma stands between the names of controllers.
bool hasProcessorController(std::string_view controllers) {
    return ("," + std::string(controllers) + ",").find(",cpu,") != std::string::npos;
}

} // namespace

std::optional<unsigned> processorQuota(const std::string& root) {
    const fs::path top = fs::path(root) / "sys/fs/cgroup";
    std::optional<double> smallest;
    const auto note = [&smallest](const fs::path& folder) {
        if (const auto quota = quotaOfGroup(folder))
            smallest = std::min(*quota, smallest.value_or(*quota));
    };
    std::ifstream groups(fs::path(root) / "proc/self/cgroup");
    // Lines such as "4:cpu,cpuacct:/user.slice", and "0::/user.slice" of the unified hierarchy.
    for (std::string line; std::getline(groups, line);) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos)
            continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const bool isUnified = controllers.empty();
        if (!isUnified && !hasProcessorController(controllers))
            continue;
        // Older systems have the unified hierarchy beside the others. In a container the path may
        // be that outside of it; the folders around it then still include the one mounted.
        for (const fs::path& mount :
             {isUnified ? top : top / "cpu", isUnified ? top / "unified" : top / controllers}) {
            fs::path group = fs::path(line.substr(second + 1)).relative_path();
            for (; !group.empty(); group = group.parent_path())
                note(mount / group);
            note(mount);
        }
    }
    if (!smallest)
        return std::nullopt;
    return static_cast<unsigned>(std::clamp(std::ceil(*smallest), 1.0, 1e6));
}

unsigned availableProcessors(const std::string& root) {
    const unsigned most = std::min(processorQuota(root).value_or(kMostProcessors), kMostProcessors);
    return std::clamp(processorsOfAffinity(), 1U, most);
}

} // namespace zenlot
