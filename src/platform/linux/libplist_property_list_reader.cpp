#include "platform/linux/libplist_property_list_reader.h"

#include "platform/linux/binary_property_list.h"
#include "platform/linux/user_file.h"

#include <QDateTime>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace zenlot {
namespace {

constexpr qint64 kMaximumListBytes = qint64{4} * 1024 * 1024;
constexpr qint64 kHeaviest = 4 * kMaximumListBytes;
constexpr int kDeepest = 64;
// The library frees a structure by recursion, so the elements that hold others are limited. Their
// number bounds the depth, whatever the file does with its tags.
constexpr qsizetype kMostContainers = 10'000;
constexpr qint64 kSecondsFrom1970To2001 = 978'307'200;

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};
struct MemoryDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

bool isModestXml(const QByteArray& content) {
    return content.count("array") + content.count("dict") <= kMostContainers;
}

QVariant valueOf(plist_t node, int depth);

QVariantList listOf(plist_t node, int depth) {
    QVariantList list;
    const uint32_t size = plist_array_get_size(node);
    plist_array_iter rawIterator = nullptr;
    plist_array_new_iter(node, &rawIterator);
    const std::unique_ptr<void, MemoryDeleter> iterator(rawIterator);
    for (uint32_t i = 0; i < size; ++i) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator.get(), &item);
        list.append(valueOf(item, depth + 1));
    }
    return list;
}

QVariantMap mapOf(plist_t node, int depth) {
    QVariantMap map;
    const uint32_t size = plist_dict_get_size(node);
    plist_dict_iter rawIterator = nullptr;
    plist_dict_new_iter(node, &rawIterator);
    const std::unique_ptr<void, MemoryDeleter> iterator(rawIterator);
    for (uint32_t i = 0; i < size; ++i) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &rawKey, &item);
        const std::unique_ptr<char, MemoryDeleter> key(rawKey);
        if (key && item)
            map.insert(QString::fromUtf8(key.get()), valueOf(item, depth + 1));
    }
    return map;
}

QVariant valueOf(plist_t node, int depth) {
    if (!node || depth > kDeepest)
        return {};
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return QVariant(static_cast<qulonglong>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return QString::fromUtf8(text, static_cast<qsizetype>(length));
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return QByteArray(bytes, static_cast<qsizetype>(length));
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return QDateTime::fromSecsSinceEpoch(kSecondsFrom1970To2001 + seconds, Qt::UTC);
    }
    case PLIST_ARRAY:
        return listOf(node, depth);
    case PLIST_DICT:
        return mapOf(node, depth);
    case PLIST_KEY:
    case PLIST_UID:
    case PLIST_NONE:
        break;
    }
    return {};
}

} // namespace

std::optional<QVariantMap> propertyListDictionary(const QByteArray& content) {
    if (content.isEmpty() || content.size() > kMaximumListBytes)
        return std::nullopt;
    const bool isBinary = content.startsWith("bplist");
    if (isBinary ? !isModestBinaryPropertyList(content, kDeepest, kHeaviest)
                 : !isModestXml(content))
        return std::nullopt;
    plist_t parsed = nullptr;
    const auto length = static_cast<uint32_t>(content.size());
    if (isBinary)
        plist_from_bin(content.constData(), length, &parsed);
    else
        plist_from_xml(content.constData(), length, &parsed);
    const std::unique_ptr<void, NodeDeleter> root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT)
        return std::nullopt;
    return mapOf(root.get(), 0);
}

std::optional<QVariantMap> LibplistPropertyListReader::dictionary(const QString& path) const {
    const UserFile file = readUserFile(path, kMaximumListBytes);
    return propertyListDictionary(file.content);
}

} // namespace zenlot
