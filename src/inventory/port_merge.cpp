#include "inventory/port_merge.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace zenlot {
namespace {

// The cached records that can be the first to say more than a fresh one: in each port those that
// are richer than all before them, at most eleven whatever the length of the list.
class RicherRecords {
  public:
    explicit RicherRecords(const std::vector<OccupiedPort>& cached) : cached_(cached) {
        entries_.reserve(cached.size());
        for (std::size_t index = 0; index < cached.size(); ++index)
            entries_.push_back({cached[index].port, index, recordRichness(cached[index])});
        std::sort(entries_.begin(), entries_.end(), [](const Entry& left, const Entry& right) {
            return std::pair(left.port, left.index) < std::pair(right.port, right.index);
        });
        const auto isNoRicher = [](const Entry& kept, const Entry& next) {
            return kept.port == next.port && next.richness <= kept.richness;
        };
        entries_.erase(std::unique(entries_.begin(), entries_.end(), isNoRicher), entries_.end());
    }

    // The first cached record of the same port with a strictly greater richness, or null.
    const OccupiedPort* find(const OccupiedPort& fresh) const {
        const int richness = recordRichness(fresh);
        auto entry = std::lower_bound(
            entries_.begin(), entries_.end(), fresh.port,
            [](const Entry& candidate, std::int64_t port) { return candidate.port < port; });
        while (entry != entries_.end() && entry->port == fresh.port) {
            if (entry->richness > richness)
                return &cached_[entry->index];
            ++entry;
        }
        return nullptr;
    }

  private:
    struct Entry {
        std::int64_t port;
        std::size_t index;
        int richness;
    };

    const std::vector<OccupiedPort>& cached_;
    std::vector<Entry> entries_;
};

std::vector<std::int64_t> sortedPorts(const std::vector<OccupiedPort>& records) {
    std::vector<std::int64_t> ports;
    ports.reserve(records.size());
    std::transform(records.begin(), records.end(), std::back_inserter(ports),
                   [](const OccupiedPort& record) { return record.port; });
    std::sort(ports.begin(), ports.end());
    return ports;
}

} // namespace

int recordRichness(const OccupiedPort& record) {
    return (record.processName.empty() ? 0 : 2) + (record.pid > 0 ? 4 : 0) +
           (record.displayName.empty() ? 0 : 2) + (record.executablePath.empty() ? 0 : 3);
}

std::vector<OccupiedPort> mergeWithCache(std::vector<OccupiedPort> fresh,
                                         std::vector<OccupiedPort> cached) {
    if (fresh.empty())
        return cached;
    if (cached.empty())
        return fresh;

    const std::vector<std::int64_t> freshPorts = sortedPorts(fresh);
    const RicherRecords richerRecords(cached);
    std::vector<OccupiedPort> merged = std::move(fresh);
    for (OccupiedPort& record : merged) {
        if (const OccupiedPort* richer = richerRecords.find(record))
            record = *richer;
    }
    for (OccupiedPort& record : cached) {
        if (!std::binary_search(freshPorts.begin(), freshPorts.end(), record.port))
            merged.push_back(std::move(record));
    }
    std::stable_sort(
        merged.begin(), merged.end(),
        [](const OccupiedPort& left, const OccupiedPort& right) { return left.port < right.port; });
    return merged;
}

} // namespace zenlot
