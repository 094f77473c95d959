#include "platform/linux/binary_property_list.h"

#include <QStringDecoder>
#include <QtGlobal>

#include <algorithm>
#include <optional>

namespace zenlot {
namespace {

constexpr quint64 kHeaderBytes = 8;
constexpr quint64 kTrailerBytes = 32;
constexpr quint64 kLongestNumber = 8;
constexpr quint64 kExtended = 0xF; // the length follows as a number

// The upper half of the byte that an object starts with.
enum Kind : int {
    integer = 0x1,
    asciiText = 0x5,
    utf16Text = 0x6,
    dictionary = 0xD,
};

class BinaryList {
  public:
    explicit BinaryList(const QByteArray& content) : content_(content) {}

    PropertyTexts texts(const QStringList& keys) {
        if (!readTrailer())
            return {};
        const std::optional<Object> root = objectAt(root_);
        // Each entry takes two references, so that whoever claims too many has no room for them.
        if (!root || root->kind != Kind::dictionary ||
            root->count > static_cast<quint64>(content_.size()) ||
            !fits(root->position, 2 * root->count * referenceBytes_))
            return {};
        qsizetype longest = 0;
        for (const QString& key : keys)
            longest = std::max(longest, key.size());
        // Many entries may share one long text: it is taken out once for each key.
        QHash<QString, quint64> values;
        for (quint64 entry = 0; entry < root->count; ++entry) {
            const std::optional<QString> key =
                textAt(reference(root->position, entry), static_cast<quint64>(longest));
            if (key && keys.contains(*key))
                values.insert(*key, reference(root->position, root->count + entry));
        }
        PropertyTexts texts;
        for (auto value = values.cbegin(); value != values.cend(); ++value) {
            if (const auto text = textAt(*value, static_cast<quint64>(content_.size())))
                texts.insert(value.key(), *text);
        }
        return texts;
    }

  private:
    struct Object {
        int kind{0};
        quint64 count{0};
        quint64 position{0}; // of what follows the count
    };

    bool readTrailer() {
        const auto size = static_cast<quint64>(content_.size());
        if (size < kHeaderBytes + kTrailerBytes)
            return false;
        end_ = size - kTrailerBytes;
        offsetBytes_ = numberAt(end_ + 6, 1);
        referenceBytes_ = numberAt(end_ + 7, 1);
        const auto isLength = [](quint64 length) {
            return length >= 1 && length <= kLongestNumber;
        };
        if (!isLength(offsetBytes_) || !isLength(referenceBytes_))
            return false;
        objects_ = numberAt(end_ + 8, 8);
        root_ = numberAt(end_ + 16, 8);
        table_ = numberAt(end_ + 24, 8);
        return table_ <= end_ && objects_ <= (end_ - table_) / offsetBytes_;
    }

    quint64 numberAt(quint64 position, quint64 bytes) const {
        quint64 number = 0;
        for (quint64 i = 0; i < bytes; ++i)
            number = number << 8U |
                     static_cast<unsigned char>(content_[static_cast<qsizetype>(position + i)]);
        return number;
    }

    bool fits(quint64 position, quint64 bytes) const {
        return position <= end_ && bytes <= end_ - position;
    }

    quint64 reference(quint64 position, quint64 index) const {
        return numberAt(position + index * referenceBytes_, referenceBytes_);
    }

    std::optional<Object> objectAt(quint64 number) const {
        if (number >= objects_)
            return std::nullopt;
        const quint64 position = numberAt(table_ + number * offsetBytes_, offsetBytes_);
        if (position < kHeaderBytes || !fits(position, 1))
            return std::nullopt;
        Object object{kindAt(position), numberAt(position, 1) & 0xFU, position + 1};
        if (object.count != kExtended)
            return object;
        if (!fits(object.position, 1) || kindAt(object.position) != Kind::integer)
            return std::nullopt;
        const quint64 bytes = quint64{1} << (numberAt(object.position, 1) & 0xFU);
        if (bytes > kLongestNumber || !fits(object.position + 1, bytes))
            return std::nullopt;
        object.count = numberAt(object.position + 1, bytes);
        object.position += 1 + bytes;
        return object;
    }

    int kindAt(quint64 position) const { return static_cast<int>(numberAt(position, 1) >> 4U); }

    // None when it is longer, or no text.
    std::optional<QString> textAt(quint64 number, quint64 longest) const {
        const std::optional<Object> object = objectAt(number);
        if (!object || object->count > longest)
            return std::nullopt;
        const char* const text = content_.constData() + object->position;
        const auto count = static_cast<qsizetype>(object->count);
        if (object->kind == Kind::asciiText && fits(object->position, object->count))
            return QString::fromLatin1(text, count);
        if (object->kind == Kind::utf16Text && fits(object->position, 2 * object->count)) {
            QStringDecoder decode(QStringDecoder::Utf16BE);
            return QString(decode(QByteArrayView(text, 2 * count)));
        }
        return std::nullopt;
    }

    const QByteArray& content_;
    quint64 end_{0}; // of the objects and their table
    quint64 table_{0};
    quint64 objects_{0};
    quint64 root_{0};
    quint64 offsetBytes_{0};
    quint64 referenceBytes_{0};
};

} // namespace

PropertyTexts textsOfBinaryPropertyList(const QByteArray& content, const QStringList& keys) {
    return BinaryList(content).texts(keys);
}

} // namespace zenlot
