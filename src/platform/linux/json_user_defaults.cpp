#include "platform/linux/json_user_defaults.h"

#include "platform/linux/directory_lock.h"
#include "platform/linux/user_file.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Json = nlohmann::json;
using JsonChanges = QMap<QString, std::optional<QVariant>>;

constexpr qint64 kMaximumBytes = qint64{8} * 1024 * 1024;
constexpr int kMaximumDepth = 128;
// How often a change starts again because another program was quicker.
constexpr int kMostAttempts = 100;

Q_LOGGING_CATEGORY(defaultsLog, "zenlot.defaults", QtInfoMsg)

struct Document {
    Json object = Json::object();
    bool isDamaged{false}; // and the object is what stands before the damage
};

// An empty file holds nothing that could be lost, so it is as good as an empty object.
Document parseDocument(const QByteArray& text) {
    if (text.isEmpty())
        return {};
    Document salvaged;
    salvaged.isDamaged = true;
    std::string key;
    Json number; // which may be cut short, until something follows it
    bool isObject = false;
    // What is parsed is later written by a recursive function.
    bool isTooDeep = false;
    const auto note = [&](int depth, Json::parse_event_t event, const Json& parsed) {
        isTooDeep = isTooDeep || depth > kMaximumDepth;
        isObject = isObject || (depth == 0 && event == Json::parse_event_t::object_start);
        if (depth != 1 || !isObject || isTooDeep)
            return !isTooDeep;
        if (event == Json::parse_event_t::key) {
            if (!number.is_null())
                salvaged.object[key] = std::exchange(number, {});
            key = parsed.get<std::string>();
        } else if (parsed.is_number()) {
            number = parsed;
        } else if (event == Json::parse_event_t::value || event == Json::parse_event_t::array_end ||
                   event == Json::parse_event_t::object_end) {
            salvaged.object[key] = parsed;
        }
        return true;
    };
    Json whole = Json::parse(text.begin(), text.end(), note, false);
    if (isTooDeep || !whole.is_object())
        return salvaged;
    return {std::move(whole), false};
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

// None where something stands that is no readable file.
std::optional<Document> documentIn(const UserFile& file) {
    switch (file.state) {
    case UserFile::State::unusable:
        return std::nullopt;
    case UserFile::State::tooLarge:
        return Document{Json::object(), true};
    default:
        return parseDocument(file.content);
    }
}

QVariantMap valuesOf(const Json& object) {
    QVariantMap values;
    for (const auto& [key, value] : object.items()) {
        if (!value.is_null())
            values.insert(QString::fromStdString(key), variantFrom(value));
    }
    return values;
}

// One attempt to change the file, and what it says then. Changed meanwhile means that it is worth
// another.
Replacement change(const QString& path, const JsonChanges& changes, Json& outcome) {
    UserFile file = readUserFile(path, kMaximumBytes);
    std::optional<Document> document = documentIn(file);
    if (!document)
        return {Replacement::Outcome::failed, file.reason};
    outcome = document->object;
    bool isDifferent = document->isDamaged;
    for (auto each = changes.cbegin(); each != changes.cend(); ++each) {
        const std::optional<Json> value =
            each.value() ? std::optional(jsonFrom(*each.value())) : std::nullopt;
        isDifferent = apply(document->object, each.key().toStdString(), value) || isDifferent;
    }
    if (!isDifferent)
        return {Replacement::Outcome::done, QString()};
    const QByteArray text = QByteArray::fromStdString(document->object.dump(4) + '\n');
    if (text.size() > kMaximumBytes || parseDocument(text).isDamaged) {
        // Which another try would not change.
        qCInfo(defaultsLog) << "Left as it is, since it would become too large:" << path;
        return {Replacement::Outcome::done, QString()};
    }
    if (document->isDamaged) {
        const Replacement aside = moveUserFileAside(path, file, u".damaged"_s);
        if (aside.outcome != Replacement::Outcome::done)
            return aside;
        qCInfo(defaultsLog) << "Set the damaged file aside:" << path;
        file = UserFile();
    }
    const Replacement replacement = replaceUserFile(path, file, text);
    if (replacement.outcome == Replacement::Outcome::done)
        outcome = std::move(document->object);
    return replacement;
}

} // namespace

// The next three are the worker's.

bool JsonUserDefaults::readFile() {
    const std::optional<Document> found = documentIn(readUserFile(path_, kMaximumBytes));
    know(found ? valuesOf(found->object) : QVariantMap());
    return found && found->isDamaged;
}

void JsonUserDefaults::know(QVariantMap values) {
    const std::scoped_lock lock(mutex_);
    known_ = std::move(values);
}

bool JsonUserDefaults::writeFile(const Changes& changes) {
    const QString directory = QFileInfo(path_).absolutePath();
    // Without a folder the change itself fails and says so.
    if (std::ranges::any_of(changes, [](const auto& value) { return value.has_value(); }))
        static_cast<void>(makePrivateDirectories(directory));
    const DirectoryLock lock(directory);
    Replacement replacement{Replacement::Outcome::changedMeanwhile, QString()};
    Json outcome = Json::object();
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        replacement = zenlot::change(path_, changes, outcome);
        if (replacement.outcome != Replacement::Outcome::changedMeanwhile)
            break;
    }
    know(valuesOf(outcome));
    if (replacement.outcome == Replacement::Outcome::done)
        return true;
    qCInfo(defaultsLog) << "Cannot change" << path_ << replacement.reason;
    return false;
}

JsonUserDefaults::JsonUserDefaults(QString path, std::chrono::milliseconds betweenTries)
    : path_(std::move(path)), betweenTries_(betweenTries) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, [this] {
        if (isWriting_)
            noteOutcome(false); // so far: the disk does not answer
        else
            beginWriting();
    });
    connect(&writing_, &QFutureWatcherBase::finished, this, &JsonUserDefaults::finishWriting);
    connect(&firstReading_, &QFutureWatcherBase::finished, this,
            &JsonUserDefaults::finishFirstReading);
    firstReading_.setFuture(writer_.run([this] { return readFile(); }));
}

JsonUserDefaults::~JsonUserDefaults() {
    settle();
}

QFuture<void> JsonUserDefaults::read() {
    return writer_.run([this] { readFile(); });
}

void JsonUserDefaults::finishFirstReading() {
    if (std::exchange(isFirstRead_, true))
        return;
    wasDamaged_ = firstReading_.result();
    if (wasDamaged_ && !isWriting_)
        next_.start(0);
}

std::optional<QVariant> JsonUserDefaults::object(const QString& key) const {
    for (const Changes* changes : {&unwritten_, &beingWritten_}) {
        if (const auto found = changes->constFind(key); found != changes->constEnd())
            return *found;
    }
    const std::scoped_lock lock(mutex_);
    const auto found = known_.constFind(key);
    return found == known_.constEnd() ? std::nullopt : std::optional(*found);
}

void JsonUserDefaults::store(const QString& key, const QVariant& value) {
    change(key, value);
}

void JsonUserDefaults::remove(const QString& key) {
    change(key, std::nullopt);
}

void JsonUserDefaults::change(const QString& key, const std::optional<QVariant>& value) {
    unwritten_.insert(key, value);
    if (!isWriting_)
        next_.start(0);
}

void JsonUserDefaults::beginWriting() {
    next_.start(betweenTries_);
    isWriting_ = true;
    beingWritten_ = std::exchange(unwritten_, {});
    writing_.setFuture(writer_.run([this, changes = beingWritten_] { return writeFile(changes); }));
}

void JsonUserDefaults::finishWriting() {
    if (!std::exchange(isWriting_, false))
        return;
    next_.stop();
    const bool isDone = writing_.result();
    if (!isDone) {
        // What was changed meanwhile is newer.
        beingWritten_.insert(unwritten_);
        unwritten_ = std::exchange(beingWritten_, {});
    }
    beingWritten_.clear();
    if (!unwritten_.isEmpty())
        next_.start(isDone ? std::chrono::milliseconds(0) : betweenTries_);
    noteOutcome(isDone);
}

void JsonUserDefaults::noteOutcome(bool isDone) {
    if (std::exchange(isUnwritten_, !isDone) == isDone)
        Q_EMIT troubleChanged();
}

void JsonUserDefaults::settle() {
    writer_.wait();
    finishFirstReading();
    bool isDone = true;
    while (isDone && (isWriting_ || next_.isActive())) {
        if (!isWriting_)
            beginWriting();
        writing_.waitForFinished();
        isDone = writing_.result();
        finishWriting();
    }
}

} // namespace zenlot
