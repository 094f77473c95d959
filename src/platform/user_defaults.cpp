#include "platform/user_defaults.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zenlot {
namespace {

bool isOfType(const QVariant& value, QMetaType::Type type) {
    return value.typeId() == type;
}

// Brings a value to one of the kinds that object() gives, or refuses it.
std::optional<QVariant> storable(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::QString:
    case QMetaType::Nullptr:
        return value;
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return QVariant::fromValue<qint64>(value.toLongLong());
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
        const quint64 number = value.toULongLong();
        if (number > quint64{std::numeric_limits<qint64>::max()})
            return QVariant::fromValue(number);
        return QVariant::fromValue(static_cast<qint64>(number));
    }
    case QMetaType::Float:
    case QMetaType::Double:
        return std::isfinite(value.toDouble()) ? std::optional(QVariant(value.toDouble()))
                                               : std::nullopt;
    case QMetaType::QVariantMap: {
        QVariantMap map = value.toMap();
        for (QVariant& element : map) {
            const std::optional<QVariant> plain = storable(element);
            if (!plain)
                return std::nullopt;
            element = *plain;
        }
        return map;
    }
    default:
        break;
    }
    if (!isOfType(value, QMetaType::QVariantList) && !isOfType(value, QMetaType::QStringList) &&
        value.metaType() != QMetaType::fromType<QList<qint64>>())
        return std::nullopt;
    QVariantList list = value.toList();
    for (QVariant& element : list) {
        const std::optional<QVariant> plain = storable(element);
        if (!plain)
            return std::nullopt;
        element = *plain;
    }
    // Not as a list of one list, which is what the braces of a return would make of it.
    return std::optional<QVariant>(std::in_place, list);
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

void UserDefaults::set(const QString& key, const QVariant& value) {
    const std::optional<QVariant> plain = storable(value);
    if (plain && !isOfType(*plain, QMetaType::Nullptr))
        store(key, *plain);
}

bool UserDefaults::boolean(const QString& key) const {
    const QVariant value = object(key).value_or(QVariant());
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toULongLong() != 0;
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
