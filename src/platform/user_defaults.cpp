#include "platform/user_defaults.h"

#include <algorithm>

namespace zenlot {
namespace {

bool isOfType(const QVariant& value, QMetaType::Type type) {
    return value.typeId() == type;
}

bool isTruthString(const QString& text) {
    auto at = std::find_if_not(text.begin(), text.end(),
                               [](QChar character) { return character.isSpace(); });
    if (at != text.end() && (*at == u'+' || *at == u'-'))
        ++at;
    at = std::find_if(at, text.end(), [](QChar character) { return character != u'0'; });
    return at != text.end() && QStringView(u"YyTt123456789").contains(*at);
}

// The elements of a list when all of them are of one type.
template <typename Element>
std::optional<QList<Element>> elements(const std::optional<QVariant>& value, QMetaType::Type type) {
    if (!value || !isOfType(*value, QMetaType::QVariantList))
        return std::nullopt;
    QList<Element> result;
    const QVariantList list = value->toList();
    for (const QVariant& element : list) {
        if (!isOfType(element, type))
            return std::nullopt;
        result.append(element.value<Element>());
    }
    return result;
}

} // namespace

void UserDefaults::set(const QString& key, const QList<qint64>& values) {
    store(key, QVariantList(values.begin(), values.end()));
}

void UserDefaults::set(const QString& key, const QStringList& values) {
    store(key, QVariantList(values.begin(), values.end()));
}

bool UserDefaults::boolean(const QString& key) const {
    const QVariant value = object(key).value_or(QVariant());
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
        return value.toLongLong() != 0;
    case QMetaType::Double:
        return value.toDouble() != 0.0;
    case QMetaType::QString:
        return isTruthString(value.toString());
    default:
        return false;
    }
}

std::optional<qint64> UserDefaults::integer(const QString& key) const {
    const std::optional<QVariant> value = object(key);
    if (!value || !isOfType(*value, QMetaType::LongLong))
        return std::nullopt;
    return value->toLongLong();
}

std::optional<QList<qint64>> UserDefaults::integers(const QString& key) const {
    return elements<qint64>(object(key), QMetaType::LongLong);
}

std::optional<QStringList> UserDefaults::strings(const QString& key) const {
    return elements<QString>(object(key), QMetaType::QString);
}

} // namespace zenlot
