#include "platform/linux/json_user_defaults.h"

#include "platform/linux/directory_lock.h"
#include "platform/linux/user_file.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Json = nlohmann::json;

constexpr qint64 kMaximumBytes = qint64{8} * 1024 * 1024;
constexpr int kMaximumDepth = 128;
// How often a change starts again because another program was quicker.
constexpr int kMostAttempts = 100;

Q_LOGGING_CATEGORY(defaultsLog, "zenlot.defaults", QtInfoMsg)

// An empty file holds nothing that could be lost, so it is as good as an empty object.
std::optional<Json> parseObject(const QByteArray& text) {
    if (text.isEmpty())
        return Json::object();
    // What is parsed is later written by a recursive function.
    bool isTooDeep = false;
    const auto noteDepth = [&](int depth, Json::parse_event_t, const Json&) {
        isTooDeep = isTooDeep || depth > kMaximumDepth;
        return !isTooDeep;
    };
    Json document = Json::parse(text.begin(), text.end(), noteDepth, false);
    if (isTooDeep || !document.is_object())
        return std::nullopt;
    return document;
}

QVariant variantFrom(const Json& json) {
    switch (json.type()) {
    case Json::value_t::boolean:
        return json.get<bool>();
    case Json::value_t::number_integer:
        return QVariant::fromValue<qint64>(json.get<std::int64_t>());
    case Json::value_t::number_unsigned: // beyond what is asked for here it is just a number
        if (!std::in_range<qint64>(json.get<std::uint64_t>()))
            return json.get<double>();
        return QVariant::fromValue<qint64>(json.get<std::int64_t>());
    case Json::value_t::number_float:
        return json.get<double>();
    case Json::value_t::string:
        return QString::fromStdString(json.get_ref<const std::string&>());
    case Json::value_t::array: {
        QVariantList list;
        for (const Json& element : json)
            list.append(variantFrom(element));
        return list;
    }
    default:
        return {};
    }
}

Json jsonFrom(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
        return std::int64_t{value.toLongLong()};
    case QMetaType::QString:
        return value.toString().toStdString();
    default: {
        Json array = Json::array();
        for (const QVariant& element : value.toList())
            array.push_back(jsonFrom(element));
        return array;
    }
    }
}

// The texts are compared because to the library 3 and 3.0 are equal.
bool isSame(const Json& left, const Json& right) {
    return left.dump() == right.dump();
}

// Puts the value under the key, or takes the key out when there is no value. False when that
// changes nothing.
bool apply(Json& document, const std::string& key, const std::optional<Json>& value) {
    const auto found = document.find(key);
    if (!value) {
        if (found == document.end())
            return false;
        document.erase(found);
        return true;
    }
    if (found != document.end() && isSame(*found, *value))
        return false;
    document[key] = *value;
    return true;
}

// One attempt to change the file. Changed meanwhile means that it is worth another.
Replacement change(const QString& path, const std::string& key, const std::optional<Json>& value) {
    const UserFile file = readUserFile(path, kMaximumBytes);
    if (file.state == UserFile::State::unusable)
        return {Replacement::Outcome::failed, file.reason};
    std::optional<Json> document;
    if (file.state != UserFile::State::tooLarge)
        document = parseObject(file.content);
    if (!document) {
        // There is nothing to take out of a file that holds nothing.
        if (!value)
            return {Replacement::Outcome::done, QString()};
        Replacement aside = moveUserFileAside(path, file, u".damaged"_s);
        if (aside.outcome == Replacement::Outcome::done) {
            qCInfo(defaultsLog) << "Set the damaged file aside:" << path;
            aside.outcome = Replacement::Outcome::changedMeanwhile;
        }
        return aside;
    }
    if (!apply(*document, key, value))
        return {Replacement::Outcome::done, QString()};
    const QByteArray text = QByteArray::fromStdString(document->dump(4) + '\n');
    if (text.size() > kMaximumBytes || !parseObject(text))
        return {Replacement::Outcome::failed, u"It would become too large"_s};
    return replaceUserFile(path, file, text);
}

void changeRepeatedly(const QString& path, const QString& key, const std::optional<Json>& value) {
    const QString directory = QFileInfo(path).absolutePath();
    // Without a folder the change itself fails and says so.
    if (value)
        static_cast<void>(makePrivateDirectories(directory));
    const DirectoryLock lock(directory);
    Replacement replacement{Replacement::Outcome::changedMeanwhile, QString()};
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        replacement = change(path, key.toStdString(), value);
        if (replacement.outcome != Replacement::Outcome::changedMeanwhile)
            break;
    }
    if (replacement.outcome != Replacement::Outcome::done)
        qCInfo(defaultsLog) << "Cannot change" << key << "in" << path << replacement.reason;
}

} // namespace

JsonUserDefaults::JsonUserDefaults(QString path) : path_(std::move(path)) {}

std::optional<QVariant> JsonUserDefaults::object(const QString& key) const {
    const UserFile file = readUserFile(path_, kMaximumBytes);
    if (file.state != UserFile::State::read)
        return std::nullopt;
    const std::optional<Json> document = parseObject(file.content);
    if (!document)
        return std::nullopt;
    const auto found = document->find(key.toStdString());
    if (found == document->end() || found->is_null())
        return std::nullopt;
    return variantFrom(*found);
}

void JsonUserDefaults::store(const QString& key, const QVariant& value) {
    changeRepeatedly(path_, key, jsonFrom(value));
}

void JsonUserDefaults::remove(const QString& key) {
    changeRepeatedly(path_, key, std::nullopt);
}

} // namespace zenlot
