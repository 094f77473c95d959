// The files of the shared container: what could be read is written as it was, and becomes rows and
// the texts of alerts.
#include "fuzzing.h"
#include "inventory/app_port_group.h"
#include "inventory/occupied_ports_json.h"
#include "inventory/port_merge.h"
#include "monitoring/conflict_listener.h"
#include "monitoring/conflict_record.h"
#include "text/display_line.h"

namespace {

using namespace zenlot;

void readPorts(std::string_view text) {
    const auto ports = decodeOccupiedPorts(text);
    if (!ports)
        return;
    ZENLOT_EXPECT(decodeOccupiedPorts(encodeOccupiedPorts(*ports)) == ports);
    const std::vector<OccupiedPort> merged = mergeWithCache(*ports, *ports);
    ZENLOT_EXPECT(merged.size() <= ports->size());
    for (const OccupiedPort& port : merged)
        ZENLOT_EXPECT(displayLine(port.displayName).size() <= kLongestLine);
}

void readConflicts(std::string_view text) {
    decodeConflictRecord(text);
    const auto records = decodeConflictRecords(text);
    if (!records)
        return;
    for (const ConflictRecord& record : *records)
        ZENLOT_EXPECT(!ConflictListener::deliveryKey(record).empty());
    const auto again = decodeConflictRecords(encodeConflictRecords(*records));
    ZENLOT_EXPECT(again && again->size() == records->size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzzing::textOf(data, size);
    readPorts(text);
    readConflicts(text);
    return 0;
}
