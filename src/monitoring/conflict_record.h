// A conflict that the background monitor detected: a development server could not have its port,
// because another process holds it.
//
// In JSON an object with the keys "port", "pid", "processName", "displayName" and "detectedAt", in
// this order. The last is a number of seconds since 2001-01-01T00:00:00Z; it may be absent or null
// and is not written when unknown. See inventory/record_json.h for how strict the decoding is.
#pragma once

#include "monitoring/reference_time.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

struct ConflictRecord {
    std::int64_t port{0};
    std::int64_t pid{0};     // of the process that holds the port
    std::string processName; // what the ignore lists are compared with
    std::string displayName; // what the user is told
    std::optional<ReferenceTime> detectedAt;

    friend bool operator==(const ConflictRecord&, const ConflictRecord&) = default;
};

// The array of "conflicts.json". None when anything in it is wrong.
std::optional<std::vector<ConflictRecord>> decodeConflictRecords(std::string_view json);
std::string encodeConflictRecords(std::span<const ConflictRecord> records);

// The object of a file for one port.
std::optional<ConflictRecord> decodeConflictRecord(std::string_view json);
std::string encodeConflictRecord(const ConflictRecord& record);

} // namespace zenlot
