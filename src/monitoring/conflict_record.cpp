#include "monitoring/conflict_record.h"

#include "inventory/record_json.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace zenlot {
namespace {

// The record as it stands in the file, with the time as a plain number.
struct FileRecord {
    std::int64_t port{0};
    std::int64_t pid{0};
    std::string processName;
    std::string displayName;
    std::optional<double> detectedAt;
};

constexpr std::array<JsonField<FileRecord>, 5> kFields{{
    {"port", &FileRecord::port},
    {"pid", &FileRecord::pid},
    {"processName", &FileRecord::processName},
    {"displayName", &FileRecord::displayName},
    {"detectedAt", &FileRecord::detectedAt},
}};

ConflictRecord fromFile(FileRecord record) {
    ConflictRecord result{record.port, record.pid, std::move(record.processName),
                          std::move(record.displayName), std::nullopt};
    if (record.detectedAt)
        result.detectedAt = fromReferenceSeconds(*record.detectedAt);
    return result;
}

FileRecord toFile(const ConflictRecord& record) {
    FileRecord result{record.port, record.pid, record.processName, record.displayName,
                      std::nullopt};
    if (record.detectedAt)
        result.detectedAt = record.detectedAt->time_since_epoch().count();
    return result;
}

} // namespace

std::optional<std::vector<ConflictRecord>> decodeConflictRecords(std::string_view json) {
    std::optional<std::vector<FileRecord>> decoded = decodeRecords<FileRecord>(json, kFields);
    if (!decoded)
        return std::nullopt;
    std::vector<ConflictRecord> records;
    records.reserve(decoded->size());
    std::transform(std::make_move_iterator(decoded->begin()),
                   std::make_move_iterator(decoded->end()), std::back_inserter(records), fromFile);
    return records;
}

std::string encodeConflictRecords(std::span<const ConflictRecord> records) {
    std::vector<FileRecord> encodable;
    encodable.reserve(records.size());
    std::transform(records.begin(), records.end(), std::back_inserter(encodable), toFile);
    return encodeRecords<FileRecord>(encodable, kFields);
}

std::optional<ConflictRecord> decodeConflictRecord(std::string_view json) {
    std::optional<FileRecord> decoded = decodeRecord<FileRecord>(json, kFields);
    if (!decoded)
        return std::nullopt;
    return fromFile(*std::move(decoded));
}

std::string encodeConflictRecord(const ConflictRecord& record) {
    return encodeRecord<FileRecord>(toFile(record), kFields);
}

} // namespace zenlot
