#include "inventory/record_json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <iterator>
#include <limits>

namespace zenlot::json_detail {
namespace {

using Json = nlohmann::json;

// Walks the characters of a text and shows every blank between tokens as a space, a run of them as
// one. The parser keeps all it has read since the last string or number for its error message,
// where a line feed takes eight bytes, so megabytes of them would turn into gigabytes.
class TokenIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    explicit TokenIterator(const char* position, const char* end)
        : position_(position), end_(end) {}

    char operator*() const {
        return place_ == Place::between && isBlank(*position_) ? ' ' : *position_;
    }

    TokenIterator& operator++() {
        const char passed = *position_++;
        switch (place_) {
        case Place::between:
            if (passed == '"')
                place_ = Place::inString;
            else if (isBlank(passed))
                position_ = std::find_if_not(position_, end_, isBlank);
            break;
        case Place::inString:
            if (passed == '"')
                place_ = Place::between;
            else if (passed == '\\')
                place_ = Place::afterBackslash;
            break;
        case Place::afterBackslash:
            place_ = Place::inString;
            break;
        }
        return *this;
    }

    TokenIterator operator++(int) {
        const TokenIterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const TokenIterator& left, const TokenIterator& right) {
        return left.position_ == right.position_;
    }

  private:
    enum class Place : std::uint8_t { between, inString, afterBackslash };

    static bool isBlank(char character) {
        return character == ' ' || character == '\n' || character == '\r' || character == '\t';
    }

    const char* position_;
    const char* end_;
    Place place_{Place::between};
};

// Receives the parser's events. Every function answers whether to go on.
class RecordReader final : public nlohmann::json_sax<Json> {
  public:
    RecordReader(DocumentKind kind, RecordSink& sink)
        : recordDepth_(kind == DocumentKind::listOfRecords ? 1 : 0), sink_(sink),
          seen_(sink.fieldCount()) {}

    bool null() override {
        return scalar([](auto slot) { return std::is_same_v<decltype(slot), OptionalNumber*>; });
    }

    bool boolean(bool /*value*/) override {
        return scalar([](auto /*slot*/) { return false; });
    }

    bool number_integer(std::int64_t value) override {
        return scalar([value](auto slot) {
            if constexpr (std::is_same_v<decltype(slot), std::int64_t*>)
                *slot = value;
            else if constexpr (std::is_same_v<decltype(slot), OptionalNumber*>)
                *slot = static_cast<double>(value);
            else
                return false;
            return true;
        });
    }

    bool number_unsigned(std::uint64_t value) override {
        if (value <= std::uint64_t{std::numeric_limits<std::int64_t>::max()})
            return number_integer(static_cast<std::int64_t>(value));
        return number_float(static_cast<double>(value), {});
    }

    bool number_float(double value, const std::string& /*text*/) override {
        return scalar([value](auto slot) {
            if constexpr (std::is_same_v<decltype(slot), OptionalNumber*>) {
                *slot = value;
                return true;
            } else {
                return false;
            }
        });
    }

    bool string(std::string& value) override {
        return scalar([&value](auto slot) {
            if constexpr (std::is_same_v<decltype(slot), std::string*>) {
                *slot = value; // a copy fits exactly, and the parser goes on using its buffer
                return true;
            } else {
                return false;
            }
        });
    }

    bool binary(Json::binary_t& /*value*/) override { return false; }

    bool start_object(std::size_t /*elements*/) override {
        if (depth_ < recordDepth_ || isKnownField())
            return false;
        if (depth_ == recordDepth_) {
            sink_.addRecord();
            std::fill(seen_.begin(), seen_.end(), false);
        }
        return enter();
    }

    bool key(std::string& name) override {
        if (depth_ != recordDepth_ + 1)
            return true;
        field_ = 0;
        while (field_ < seen_.size() && sink_.key(field_) != name)
            ++field_;
        if (field_ == seen_.size())
            return true;
        const bool isFirst = !seen_[field_];
        seen_[field_] = true;
        return isFirst;
    }

    bool end_object() override {
        --depth_;
        return depth_ != recordDepth_ || isComplete();
    }

    bool start_array(std::size_t /*elements*/) override {
        return depth_ != recordDepth_ && !isKnownField() && enter();
    }

    bool end_array() override {
        --depth_;
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*lastToken*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

  private:
    using OptionalNumber = std::optional<double>;

    // Whether the value that comes next is that of a known key.
    bool isKnownField() const { return depth_ == recordDepth_ + 1 && field_ < seen_.size(); }

    template <class Store>
    bool scalar(Store store) {
        if (depth_ <= recordDepth_)
            return false;
        return !isKnownField() || std::visit(store, sink_.slot(field_));
    }

    bool enter() { return ++depth_ <= kMaxJsonDepth; }

    bool isComplete() const {
        for (std::size_t field = 0; field < seen_.size(); ++field) {
            if (!seen_[field] && !std::holds_alternative<OptionalNumber*>(sink_.slot(field)))
                return false;
        }
        return true;
    }

    std::size_t recordDepth_; // how many containers enclose a record
    RecordSink& sink_;
    std::vector<bool> seen_; // by field, in the current record
    std::size_t depth_{0};
    std::size_t field_{0}; // of the last key in a record; the number of fields for an unknown key
};

bool isPlain(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char character) {
        return character >= ' ' && character <= '~' && character != '"' && character != '\\';
    });
}

// The same JSON with DEL and the C1 controls escaped. It may hold them as they are, but a terminal
// that shows it would obey.
std::string withoutTerminalControls(const std::string& json) {
    std::string result;
    for (std::size_t place = 0; place < json.size(); ++place) {
        // C1 controls are two bytes of UTF-8, the second of which is their number.
        const bool isC1 = json[place] == '\xC2' && json[place + 1] < '\xA0';
        if (isC1)
            ++place;
        if (isC1 || json[place] == '\x7F') {
            std::array<char, 7> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x",
                          unsigned{static_cast<unsigned char>(json[place])});
            result += escape.data();
        } else {
            result += json[place];
        }
    }
    return result;
}

void appendKey(std::string& json, std::string_view key) {
    if (json.back() != '{')
        json += ',';
    json += '"';
    json += key;
    json += "\":";
}

} // namespace

bool parse(std::string_view text, DocumentKind kind, RecordSink& sink) {
    // The parser takes a zero byte for the end of the text.
    if (text.size() > kMaxJsonBytes || text.find('\0') != std::string_view::npos)
        return false;
    const char* const end = text.data() + text.size();
    try {
        RecordReader reader(kind, sink);
        return Json::sax_parse(TokenIterator(text.data(), end), TokenIterator(end, end), &reader);
    } catch (const std::exception&) { // out of memory
        return false;
    }
}

void appendMember(std::string& json, std::string_view key, std::int64_t value) {
    appendKey(json, key);
    json += std::to_string(value);
}

void appendMember(std::string& json, std::string_view key, const std::string& value) {
    appendKey(json, key);
    if (isPlain(value)) {
        json += '"';
        json += value;
        json += '"';
    } else {
        json += withoutTerminalControls(
            Json(value).dump(-1, ' ', false, Json::error_handler_t::replace));
    }
}

void appendMember(std::string& json, std::string_view key, const std::optional<double>& value) {
    if (!value || !std::isfinite(*value))
        return;
    appendKey(json, key);
    json += Json(*value).dump();
}

} // namespace zenlot::json_detail
