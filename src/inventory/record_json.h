// Strict JSON for flat records, driven by one table of keys and members per record.
//
//     constexpr std::array<JsonField<Point>, 2> kPointFields{{
//         {"x", &Point::x},
//         {"label", &Point::label},
//     }};
//     std::optional<std::vector<Point>> points = decodeRecords<Point>(text, kPointFields);
//     std::string text = encodeRecords<Point>(*points, kPointFields);
//
// Integers and strings are required and must have exactly that type: a null, a fraction, an
// exponent or a value outside 64 bits is none. Optional numbers may be absent or null, and are not
// written when empty. Keys match exactly; unknown keys are ignored whatever their value; a known
// key that stands twice is an error.
//
// A document is decoded whole or not at all. The text may come from anybody: its size and nesting
// are bounded, no document is ever built in memory, nothing is thrown. Ill-formed UTF-8, and a
// number that is too large for a double, make the whole document ill-formed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zenlot {

// Longer texts are not looked at.
inline constexpr std::size_t kMaxJsonBytes = std::size_t{64} * 1024 * 1024;

// Objects and arrays inside each other, the outermost included.
inline constexpr std::size_t kMaxJsonDepth = 32;

template <class Record>
struct JsonField {
    std::string_view key;
    std::variant<std::int64_t Record::*, std::string Record::*, std::optional<double> Record::*>
        member;
};

// What the templates below share, whatever the record.
namespace json_detail {

using Slot = std::variant<std::int64_t*, std::string*, std::optional<double>*>;

enum class DocumentKind : std::uint8_t { oneRecord, listOfRecords };

// Where parse() puts what it reads.
class RecordSink {
  public:
    RecordSink() = default;
    RecordSink(const RecordSink&) = delete;
    RecordSink& operator=(const RecordSink&) = delete;
    virtual ~RecordSink() = default;

    virtual std::size_t fieldCount() const = 0;
    virtual std::string_view key(std::size_t field) const = 0;
    virtual void addRecord() = 0;
    virtual Slot slot(std::size_t field) = 0; // in the record added last
};

// False when the text is not such a document; the sink then holds the part before the fault.
bool parse(std::string_view text, DocumentKind kind, RecordSink& sink);

// Each adds one member to the object that `json` ends in. An empty optional adds none.
void appendMember(std::string& json, std::string_view key, std::int64_t value);
void appendMember(std::string& json, std::string_view key, const std::string& value);
void appendMember(std::string& json, std::string_view key, const std::optional<double>& value);

template <class Record>
class RecordList final : public RecordSink {
  public:
    explicit RecordList(std::span<const JsonField<Record>> fields) : fields_(fields) {}

    std::size_t fieldCount() const override { return fields_.size(); }
    std::string_view key(std::size_t field) const override { return fields_[field].key; }
    void addRecord() override { records.emplace_back(); }
    Slot slot(std::size_t field) override {
        return std::visit([this](auto member) -> Slot { return &(records.back().*member); },
                          fields_[field].member);
    }

    std::vector<Record> records;

  private:
    std::span<const JsonField<Record>> fields_;
};

template <class Record>
void appendRecord(std::string& json, const Record& record,
                  std::span<const JsonField<Record>> fields) {
    json += '{';
    for (const JsonField<Record>& field : fields) {
        std::visit([&](auto member) { appendMember(json, field.key, record.*member); },
                   field.member);
    }
    json += '}';
}

} // namespace json_detail

// The records of a document that is an array of objects; none when anything in it is wrong.
template <class Record>
std::optional<std::vector<Record>> decodeRecords(std::string_view text,
                                                 std::span<const JsonField<Record>> fields) {
    json_detail::RecordList<Record> list(fields);
    if (!json_detail::parse(text, json_detail::DocumentKind::listOfRecords, list))
        return std::nullopt;
    return std::move(list.records);
}

// The record of a document that is one object; none when anything in it is wrong.
template <class Record>
std::optional<Record> decodeRecord(std::string_view text,
                                   std::span<const JsonField<Record>> fields) {
    json_detail::RecordList<Record> list(fields);
    if (!json_detail::parse(text, json_detail::DocumentKind::oneRecord, list))
        return std::nullopt;
    return std::move(list.records.front());
}

// Writes compact JSON with the keys in the order of the table. Ill-formed UTF-8 becomes U+FFFD; a
// number that JSON can't express is left out. What a terminal could take for a command is escaped.
template <class Record>
std::string encodeRecord(const Record& record, std::span<const JsonField<Record>> fields) {
    std::string json;
    json_detail::appendRecord(json, record, fields);
    return json;
}

template <class Record>
std::string encodeRecords(std::span<const Record> records,
                          std::span<const JsonField<Record>> fields) {
    std::string json = "[";
    for (const Record& record : records) {
        if (json.size() > 1)
            json += ',';
        json_detail::appendRecord(json, record, fields);
    }
    json += ']';
    return json;
}

} // namespace zenlot
