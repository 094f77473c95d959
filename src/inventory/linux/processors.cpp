#include "inventory/linux/processors.h"

#include "inventory/linux/proc_files.h"

#include <sched.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <thread>

namespace zenlot {
namespace {

// Threads of a walk wait for each other in the kernel; more of them only cost.
constexpr unsigned kMostProcessors = 8;

unsigned processorsOfAffinity() {
    cpu_set_t processors;
    // Fails on machines with more processors than the set holds.
    if (::sched_getaffinity(0, sizeof processors, &processors) == 0)
        return static_cast<unsigned>(CPU_COUNT(&processors));
    return std::thread::hardware_concurrency();
}

// The number at the beginning, which is taken off; none for what is not above 0. No limit is
// written as "max" or as a negative number.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number <= 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

// Of a quota of processor time and the period on the clock that it is for, such as
// "150000 100000". What is more than there are processors in any machine is no limit.
std::optional<unsigned> processorsIn(std::string_view text) {
    constexpr std::int64_t kMost = 1'000'000;
    const auto quota = takeNumber(text);
    const auto period = takeNumber(text);
    if (!quota || !period || *quota / *period >= kMost)
        return std::nullopt;
    return static_cast<unsigned>(*quota / *period + (*quota % *period == 0 ? 0 : 1));
}

std::optional<unsigned> quotaOfGroup(const ProcFiles& files, const std::string& folder) {
    if (const auto both = files.read(folder + "/cpu.max"))
        return processorsIn(*both);
    const auto quota = files.read(folder + "/cpu.cfs_quota_us");
    const auto period = files.read(folder + "/cpu.cfs_period_us");
    return quota && period ? processorsIn(quota->substr(0, quota->find('\n')) + ' ' + *period)
                           : std::nullopt;
}

// A comma stands between the names of controllers.
bool hasProcessorController(const std::string& controllers) {
    return ("," + controllers + ",").find(",cpu,") != std::string::npos;
}

} // namespace

std::optional<unsigned> processorQuota(const std::string& root) {
    const ProcFiles files(root);
    const std::string groups = files.read("proc/self/cgroup").value_or(std::string());
    std::optional<unsigned> smallest;
    // Lines such as "4:cpu,cpuacct:/user.slice", and "0::/user.slice" of the unified hierarchy.
    for (std::string_view rest = groups; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(":/", first == std::string_view::npos ? 0 : first + 1);
        if (first == std::string_view::npos || second == std::string_view::npos)
            continue;
        const std::string controllers(line.substr(first + 1, second - first - 1));
        const bool isUnified = controllers.empty();
        if (!isUnified && !hasProcessorController(controllers))
            continue;
        // Older systems have the unified hierarchy beside the others. In a container the path may
        // be that outside of it; the groups around it then still include the one mounted.
        for (const std::string& mount : {isUnified ? std::string() : std::string("/cpu"),
                                         isUnified ? "/unified" : '/' + controllers}) {
            std::string group(line.substr(second + 1));
            while (!group.empty()) {
                group.resize(group.find_last_not_of('/') + 1);
                std::string folder("sys/fs/cgroup");
                folder.append(mount).append(group);
                if (const auto quota = quotaOfGroup(files, folder))
                    smallest = std::min(*quota, smallest.value_or(*quota));
                group.resize(group.empty() ? 0 : group.rfind('/') + 1);
            }
        }
    }
    return smallest;
}

unsigned availableProcessors(const std::string& root) {
    const unsigned most = std::min(processorQuota(root).value_or(kMostProcessors), kMostProcessors);
    return std::clamp(processorsOfAffinity(), 1U, most);
}

} // namespace zenlot
