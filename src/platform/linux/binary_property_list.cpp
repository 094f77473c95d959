#include "platform/linux/binary_property_list.h"

#include <QtGlobal>

#include <algorithm>
#include <optional>
#include <vector>

namespace zenlot {
namespace {

constexpr quint64 kHeaderBytes = 8;
constexpr quint64 kTrailerBytes = 32;
constexpr quint64 kLongestNumber = 8;
constexpr int kExtended = 0xF; // the length follows as a number

// The upper half of the byte that an object starts with.
enum Kind : int {
    simple = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiText = 0x5,
    utf16Text = 0x6,
    uid = 0x8,
    array = 0xA,
    set = 0xC,
    dictionary = 0xD,
};

class Scale {
  public:
    Scale(const QByteArray& content, int deepest, qint64 heaviest)
        : content_(content), deepest_(deepest), heaviest_(static_cast<quint64>(heaviest)) {}

    bool accepts() {
        const quint64 size = static_cast<quint64>(content_.size());
        if (size < kHeaderBytes + kTrailerBytes)
            return false;
        end_ = size - kTrailerBytes;
        offsetBytes_ = byteAt(end_ + 6);
        referenceBytes_ = byteAt(end_ + 7);
        const auto isLength = [](quint64 length) {
            return length >= 1 && length <= kLongestNumber;
        };
        if (!isLength(offsetBytes_) || !isLength(referenceBytes_))
            return false;
        const quint64 count = numberAt(end_ + 8, 8);
        const quint64 root = numberAt(end_ + 16, 8);
        table_ = numberAt(end_ + 24, 8);
        if (table_ > end_ || count > (end_ - table_) / offsetBytes_)
            return false;
        weights_.resize(count);
        return weight(root, 0).has_value();
    }

  private:
    quint64 byteAt(quint64 position) const {
        return static_cast<unsigned char>(content_[static_cast<qsizetype>(position)]);
    }

    quint64 numberAt(quint64 position, quint64 bytes) const {
        quint64 number = 0;
        for (quint64 i = 0; i < bytes; ++i)
            number = number << 8U | byteAt(position + i);
        return number;
    }

    bool fits(quint64 position, quint64 bytes) const {
        return position <= end_ && bytes <= end_ - position;
    }

    // Keys with a zero character end the program that reads them.
    bool isText(quint64 position, quint64 units, quint64 unitBytes) const {
        if (!fits(position, units * unitBytes))
            return false;
        for (quint64 i = 0; i < units; ++i) {
            if (numberAt(position + i * unitBytes, unitBytes) == 0)
                return false;
        }
        return true;
    }

    // Of an object with everything below it; none when it is unsound or too much.
    std::optional<quint64> weight(quint64 object, int depth) {
        if (object >= weights_.size() || depth > deepest_)
            return std::nullopt;
        if (weights_[object] == 0) {
            const std::optional<quint64> found = weigh(object, depth);
            if (!found || *found > heaviest_)
                return std::nullopt;
            weights_[object] = *found;
        }
        return weights_[object];
    }

    // A circle has no end, which its depth shows: whoever meets one gives up as a whole.
    std::optional<quint64> weigh(quint64 object, int depth) {
        quint64 position = numberAt(table_ + object * offsetBytes_, offsetBytes_);
        if (position < kHeaderBytes || !fits(position, 1))
            return std::nullopt;
        const int kind = static_cast<int>(byteAt(position) >> 4U);
        quint64 count = byteAt(position) & 0xFU;
        ++position;
        if (kind == Kind::simple)
            return 1;
        if (kind == Kind::integer || kind == Kind::real || kind == Kind::date) {
            const quint64 bytes = quint64{1} << std::min<quint64>(count, 5);
            return fits(position, bytes) ? std::optional(bytes + 1) : std::nullopt;
        }
        if (count == kExtended && kind != Kind::uid) {
            if (!fits(position, 1) || byteAt(position) >> 4U != Kind::integer)
                return std::nullopt;
            const quint64 bytes = quint64{1} << (byteAt(position) & 0xFU);
            if (bytes > kLongestNumber || !fits(position + 1, bytes))
                return std::nullopt;
            count = numberAt(position + 1, bytes);
            position += 1 + bytes;
        }
        if (count > static_cast<quint64>(content_.size()))
            return std::nullopt;
        switch (kind) {
        case Kind::uid:
            ++count;
            [[fallthrough]];
        case Kind::data:
            return fits(position, count) ? std::optional(count + 1) : std::nullopt;
        case Kind::asciiText:
            return isText(position, count, 1) ? std::optional(count + 1) : std::nullopt;
        case Kind::utf16Text: // as much as three bytes of UTF-8 for each unit
            return isText(position, count, 2) ? std::optional(3 * count + 1) : std::nullopt;
        case Kind::array:
        case Kind::set:
            return weighParts(position, count, depth);
        case Kind::dictionary:
            return weighParts(position, 2 * count, depth);
        default:
            return std::nullopt;
        }
    }

    std::optional<quint64> weighParts(quint64 position, quint64 count, int depth) {
        if (!fits(position, count * referenceBytes_))
            return std::nullopt;
        quint64 sum = 1;
        for (quint64 i = 0; i < count; ++i) {
            const std::optional<quint64> part =
                weight(numberAt(position + i * referenceBytes_, referenceBytes_), depth + 1);
            if (!part || *part > heaviest_ - std::min(sum, heaviest_))
                return std::nullopt;
            sum += *part;
        }
        return sum;
    }

    const QByteArray& content_;
    int deepest_;
    quint64 heaviest_;
    quint64 end_{0}; // of the objects and their table
    quint64 table_{0};
    quint64 offsetBytes_{0};
    quint64 referenceBytes_{0};
    std::vector<quint64> weights_; // by object; 0 until it is known
};

} // namespace

bool isModestBinaryPropertyList(const QByteArray& content, int deepest, qint64 heaviest) {
    return Scale(content, deepest, heaviest).accepts();
}

} // namespace zenlot
