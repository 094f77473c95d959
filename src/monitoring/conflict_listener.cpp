#include "monitoring/conflict_listener.h"

#include "monitoring/broadcast_names.h"
#include "monitoring/ignore_list.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QElapsedTimer>
#include <QPromise>
#include <QRegularExpression>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <system_error>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// How long conflicts are delivered without a turn of the event loop.
constexpr std::chrono::milliseconds kSlice = 4ms;

// So many holders are looked at together.
constexpr std::size_t kMostHolders = 64;

std::optional<std::int64_t> parseDecimal(const QString& text) {
    const std::string digits = text.toStdString();
    const char* const end = digits.data() + digits.size();
    std::int64_t value = 0;
    const auto [rest, error] = std::from_chars(digits.data(), end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

std::optional<std::int64_t> parseLastPiece(const QString& text, QChar separator) {
    const QStringList pieces = text.split(separator, Qt::SkipEmptyParts);
    return pieces.isEmpty() ? std::nullopt : parseDecimal(pieces.last());
}

// Finds digits of every script, so that a number which isn't ASCII hides none that follows it.
QRegularExpression numberAfter(const QString& word) {
    return QRegularExpression(word + u"\\s+(\\d+)"_s,
                              QRegularExpression::UseUnicodePropertiesOption);
}

std::optional<std::int64_t> findNumber(const QRegularExpression& pattern, const QString& line) {
    return parseLastPiece(pattern.match(line).captured(), u' ');
}

QString announcedName(const QString& line) {
    const QString before = u", "_s;
    const qsizetype comma = line.indexOf(before);
    const qsizetype start = comma + before.size();
    const qsizetype end = line.indexOf(u" (pid "_s);
    return comma >= 0 && end >= start ? line.mid(start, end - start) : u"Process"_s;
}

QString boundedText(const std::string& name) {
    std::size_t length = std::min(name.size(), ConflictListener::kLongestName);
    const auto continuesCharacter = [&name](std::size_t index) {
        return index < name.size() && (static_cast<unsigned char>(name[index]) & 0xc0U) == 0x80U;
    };
    while (length > 0 && continuesCharacter(length))
        --length;
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(length));
}

// Where the clock was set back since the start, this moment is as good as that.
bool isFreshAt(const ConflictRecord& record, ReferenceTime startedAt, ReferenceTime now) {
    return record.detectedAt &&
           *record.detectedAt >= std::min(startedAt, now) - ConflictListener::kSlackBeforeStart &&
           now - *record.detectedAt <= ConflictListener::kLongestAge;
}

// Times may come without fractions of a second, which then have been cut off.
bool hasStartedAfter(const ProcessSighting& holder, ReferenceTime detectedAt) {
    const double seconds = detectedAt.time_since_epoch().count();
    const std::chrono::seconds cutOff = seconds == std::floor(seconds) ? 1s : 0s;
    return holder.startedAt && toReferenceTime(*holder.startedAt) > detectedAt + cutOff;
}

} // namespace

// g++ 12 destroys some temporaries of an awaited expression twice, so futures and tasks are named
// before they are awaited.

ConflictListener::ConflictListener(Collaborators collaborators, ConflictListenerPauses pauses,
                                   QObject* parent)
    : QObject(parent), with_(std::move(collaborators)), pauses_(pauses),
      conflicts_(with_.container), monitorLog_(with_.monitorLog) {
    pauseBetweenPolls_.setSingleShot(true);
    pauseBetweenPolls_.setTimerType(Qt::PreciseTimer);
    connect(&pauseBetweenPolls_, &QTimer::timeout, this, &ConflictListener::poll);
}

void ConflictListener::start(AppSettings& settings) {
    settings_ = &settings;
    if (isStarted_)
        return;
    startedAt_ = with_.clock();
    isStarted_ = true;
    log(u"conflict listener started"_s);
    observe(kConflictsUpdatedBroadcast, BroadcastCenter::Meaning::readAnew, pauses_.afterList);
    for (const std::int64_t port : watchedConflictPorts)
        observe(conflictBroadcast(port), BroadcastCenter::Meaning::event, pauses_.afterPort);
    poll();
}

void ConflictListener::observe(const QString& name, BroadcastCenter::Meaning meaning,
                               std::chrono::milliseconds pause) {
    QTimer& timer = bursts_[name].pause;
    timer.setSingleShot(true);
    timer.setInterval(pause);
    connect(&timer, &QTimer::timeout, this, [this, name] { finishPause(name); });
    with_.broadcasts.observe(name, meaning, this,
                             [this](const QString& heard) { handleBroadcast(heard); });
}

bool ConflictListener::isSwitchedOn() const {
    return settings_ && settings_->conflictMonitoringEnabled();
}

QCoro::Task<> ConflictListener::poll() {
    const QPointer<ConflictListener> self(this);
    QCoro::Task<> check = checkConflictRecords();
    co_await check;
    if (!self)
        co_return;
    QCoro::Task<> logPoll = pollLegacyDaemonLog();
    co_await logPoll;
    if (self)
        pauseBetweenPolls_.start(pauses_.betweenPolls);
}

void ConflictListener::handleBroadcast(const QString& name) {
    Burst& burst = bursts_[name];
    if (std::exchange(burst.isOn, true))
        burst.isMorePending = true;
    else
        answer(name, Turn::firstOfBurst);
}

QCoro::Task<> ConflictListener::answer(QString name, Turn turn) {
    const QPointer<ConflictListener> self(this);
    if (name == kConflictsUpdatedBroadcast) {
        QCoro::Task<> check = checkConflictRecords();
        co_await check;
    } else if (const std::optional<std::int64_t> port = parseLastPiece(name, u'.')) {
        QCoro::Task<> handling = handleConflict(*port, turn);
        co_await handling;
    }
    if (self)
        bursts_[name].pause.start();
}

void ConflictListener::finishPause(const QString& name) {
    Burst& burst = bursts_[name];
    if (std::exchange(burst.isMorePending, false))
        answer(name, Turn::laterInBurst);
    else
        burst.isOn = false;
}

QCoro::Task<> ConflictListener::checkConflictRecords() {
    if (!isSwitchedOn())
        co_return;
    const QPointer<ConflictListener> self(this);
    const QFuture<SharedReading> future =
        worker_.run([this, startedAt = startedAt_] { return readFreshRecords(startedAt); });
    const SharedReading reading = co_await future;
    if (!self || !reading || !isSwitchedOn())
        co_return;
    logRecordState(reading->count, reading->fresh.size());
    QCoro::Task<> delivery = deliverInSlices(reading->fresh, Channel::files);
    co_await delivery;
}

// On the worker thread.
ConflictListener::SharedReading ConflictListener::readFreshRecords(ReferenceTime startedAt) {
    const ConflictRecordsFile::Records& records = conflicts_.read();
    if (!records)
        return nullptr;
    auto reading = std::make_shared<Reading>();
    reading->count = records->size();
    const ReferenceTime now = with_.clock();
    std::copy_if(records->begin(), records->end(), std::back_inserter(reading->fresh),
                 [&](const ConflictRecord& record) { return isFreshAt(record, startedAt, now); });
    if (reading->fresh.size() > kMostRecords)
        reading->fresh.erase(reading->fresh.begin(), reading->fresh.end() - kMostRecords);
    return reading;
}

bool ConflictListener::isFresh(const ConflictRecord& record) const {
    return isFreshAt(record, startedAt_, with_.clock());
}

void ConflictListener::logRecordState(std::size_t count, std::size_t fresh) {
    const QString state = u"%1:%2"_s.arg(count).arg(fresh);
    if (state == lastLoggedConflictRecordState_)
        return;
    lastLoggedConflictRecordState_ = state;
    log(u"conflict records loaded count=%1 fresh=%2"_s.arg(count).arg(fresh));
}

QCoro::Task<> ConflictListener::handleLegacyConflict(std::int64_t port) {
    return handleConflict(port, Turn::firstOfBurst);
}

QCoro::Task<> ConflictListener::handleConflict(std::int64_t port, Turn turn) {
    if (!settings_)
        co_return;
    const QString ignored = u"legacy conflict ignored port=%1: "_s.arg(port);
    if (!settings_->conflictMonitoringEnabled()) {
        log(ignored + u"setting disabled"_s);
        co_return;
    }
    if (settings_->conflictIgnoredPorts().contains(port)) {
        log(ignored + u"ignored port"_s);
        co_return;
    }
    const QPointer<ConflictListener> self(this);
    const QFuture<std::optional<ConflictRecord>> reading =
        worker_.run([container = with_.container, port] {
            const auto text = SharedContainer::read(container.conflictFileURL(port));
            return text ? decodeConflictRecord(*text) : std::nullopt;
        });
    const std::optional<ConflictRecord> record = co_await reading;
    if (!self)
        co_return;
    if (record && isFresh(*record)) {
        log(u"legacy conflict record found port=%1"_s.arg(port));
        QCoro::Task<> delivery = deliver(*record);
        co_await delivery;
        co_return;
    }
    if (record)
        log(u"legacy conflict record ignored port=%1: stale"_s.arg(port));
    if (turn == Turn::laterInBurst)
        co_return;
    const QFuture<std::vector<PortProcess>> lookup = with_.inventory.processesOnPort(port);
    const std::vector<PortProcess> holders = co_await lookup;
    if (!self)
        co_return;
    if (holders.empty()) {
        log(ignored + u"no process found"_s);
        co_return;
    }
    const PortProcess& holder = holders.front();
    deliverSeen({port, holder.pid, holder.name, holder.displayName, with_.clock()},
                {holder.target().process, holder.obstacle}, Channel::files);
}

QCoro::Task<> ConflictListener::pollLegacyDaemonLog() {
    if (!isSwitchedOn())
        co_return;
    const QPointer<ConflictListener> self(this);
    QPromise<void> end; // comes with the coroutine's, whichever way that ends
    end.start();
    const QFuture<void> endOfEarlierPoll = std::exchange(endOfLogPoll_, end.future());
    co_await endOfEarlierPoll;
    if (!self || !isSwitchedOn())
        co_return;
    QCoro::Task<> reading = readMonitorLog();
    co_await reading;
}

QCoro::Task<> ConflictListener::readMonitorLog() {
    const QPointer<ConflictListener> self(this);
    const QFuture<MonitorLogTail::Beginning> future =
        worker_.run([this] { return monitorLog_.begin(); });
    const MonitorLogTail::Beginning beginning = co_await future;
    if (!self)
        co_return;
    if (beginning.error)
        log(u"legacy daemon log polling failed: "_s + *beginning.error);
    bool isMoreExpected = beginning.isPieceFound;
    while (isMoreExpected) {
        const QFuture<std::vector<ConflictRecord>> next =
            worker_.run([this] { return readAnnouncements(); });
        const std::vector<ConflictRecord> records = co_await next;
        if (!self)
            co_return;
        isMoreExpected = !records.empty();
        if (!isSwitchedOn())
            continue; // but read on, so that the next poll finds the end
        QCoro::Task<> delivery = deliverInSlices(records, Channel::monitorLog);
        co_await delivery;
        if (!self)
            co_return;
    }
}

// On the worker thread. Some of the announced conflicts, empty after the last one.
std::vector<ConflictRecord> ConflictListener::readAnnouncements() {
    std::vector<ConflictRecord> records;
    while (records.empty()) {
        const std::vector<QString> lines = monitorLog_.nextAnnouncements();
        if (lines.empty())
            break;
        for (const QString& line : lines) {
            if (std::optional<ConflictRecord> record = parseLegacyLogLine(line))
                records.push_back(*std::move(record));
        }
    }
    return records;
}

std::optional<ConflictRecord> ConflictListener::parseLegacyLogLine(const QString& line) const {
    if (!line.contains(kConflictAnnouncement))
        return std::nullopt;
    static const QRegularExpression portPattern = numberAfter(u"port"_s);
    static const QRegularExpression pidPattern = numberAfter(u"pid"_s);
    const std::optional<std::int64_t> port = findNumber(portPattern, line);
    if (!port)
        return std::nullopt;
    const std::string name = announcedName(line).toStdString();
    return ConflictRecord{*port, findNumber(pidPattern, line).value_or(0), name, name,
                          with_.clock()};
}

QCoro::Task<> ConflictListener::deliverInSlices(std::span<const ConflictRecord> records,
                                                Channel channel) {
    const QPointer<ConflictListener> self(this);
    QElapsedTimer slice;
    while (!records.empty()) {
        const auto next = records.first(std::min(records.size(), kMostHolders));
        records = records.subspan(next.size());
        QCoro::Task<std::vector<ProcessSighting>> look = lookAtHolders(next);
        const std::vector<ProcessSighting> holders = co_await look;
        if (!self)
            co_return;
        slice.start();
        for (std::size_t index = 0; index < next.size(); ++index) {
            if (slice.hasExpired(kSlice.count())) {
                QCoro::Task<> turnOfTheLoop = QCoro::sleepFor(0ms);
                co_await turnOfTheLoop;
                if (!self)
                    co_return;
                slice.start();
            }
            if (!isSwitchedOn())
                co_return;
            const ConflictRecord& record = next[index];
            if (channel == Channel::monitorLog)
                log(u"legacy daemon log conflict port=%1 pid=%2 process=%3"_s.arg(
                    QString::number(record.port), QString::number(record.pid),
                    boundedText(record.processName)));
            deliverSeen(record, holders[index], channel);
            if (!self)
                co_return;
        }
    }
}

// One sighting for each record. Whoever was told of already need not be looked at.
QCoro::Task<std::vector<ProcessSighting>>
ConflictListener::lookAtHolders(std::span<const ConflictRecord> records) {
    std::vector<ProcessSighting> holders;
    std::vector<ForceQuitTarget> targets;
    for (const ConflictRecord& record : records) {
        const bool isKnown = isDelivered(deliveryKey(record));
        targets.push_back({{isKnown ? 0 : record.pid}});
        holders.push_back({{record.pid}});
    }
    if (std::ranges::none_of(targets, [](const ForceQuitTarget& target) {
            return processIdOf(target.process.pid) != 0;
        }))
        co_return holders;
    const QFuture<std::vector<ProcessSighting>> looking =
        with_.inventory.lookAtProcesses(std::move(targets));
    holders = co_await looking;
    co_return holders;
}

QCoro::Task<> ConflictListener::deliver(ConflictRecord record) {
    const QPointer<ConflictListener> self(this);
    QCoro::Task<std::vector<ProcessSighting>> look = lookAtHolders({&record, 1});
    const std::vector<ProcessSighting> holders = co_await look;
    if (self)
        deliverSeen(record, holders.front(), Channel::files);
}

bool ConflictListener::isDelivered(const std::string& key) const {
    return deliveredConflictKeys_.contains(key) || earlierConflictKeys_.contains(key);
}

void ConflictListener::noteDelivery(std::string key) {
    if (deliveredConflictKeys_.size() >= kMostRecords)
        earlierConflictKeys_ = std::exchange(deliveredConflictKeys_, {});
    deliveredConflictKeys_.insert(std::move(key));
}

bool ConflictListener::isToldElsewhere(const ConflictRecord& record, Channel channel) {
    const ReferenceTime now = with_.clock();
    // Not for each of many.
    if (now - toldSince_ > kSameConflict || now < toldSince_) {
        toldSince_ = now;
        std::erase_if(told_,
                      [now](const auto& told) { return now - told.second.at > kSameConflict; });
    }
    const auto [told, isNew] = told_.try_emplace({record.pid, record.port}, Told{now, channel});
    if (!isNew && told->second.channel != channel && now - told->second.at <= kSameConflict)
        return true;
    told->second = {now, channel};
    return false;
}

void ConflictListener::deliverSeen(const ConflictRecord& record, const ProcessSighting& holder,
                                   Channel channel) {
    if (!settings_)
        return;
    const QString ignored = u"conflict ignored port=%1: "_s.arg(record.port);
    if (settings_->conflictIgnoredPorts().contains(record.port)) {
        log(ignored + u"ignored port"_s);
        return;
    }
    std::string key = deliveryKey(record);
    if (isDelivered(key))
        return;
    noteDelivery(std::move(key));
    if (isToldElsewhere(record, channel))
        return;
    const QString processName = boundedText(record.processName);
    const QStringList ignoredApps = settings_->conflictIgnoredApps();
    const auto isIgnored = [&](const QString& app) { return matchesIgnoredName(processName, app); };
    if (std::any_of(ignoredApps.begin(), ignoredApps.end(), isIgnored)) {
        log(ignored + u"ignored app "_s + processName);
        return;
    }
    if (holder.obstacle == ForceQuitObstacle::gone) {
        log(ignored + u"holder has ended"_s);
        return;
    }
    if (record.detectedAt && hasStartedAfter(holder, *record.detectedAt)) {
        log(ignored + u"holder started later"_s);
        return;
    }
    log(u"conflict notifying port=%1 pid=%2 process=%3"_s.arg(
        QString::number(record.port), QString::number(record.pid), processName));
    const QString displayName = boundedText(record.displayName);
    const QPointer<ConflictListener> self(this);
    Q_EMIT with_.notifications.conflictDetected({record.port,
                                                 {record.pid, holder.process.startTime},
                                                 processName,
                                                 displayName,
                                                 holder.obstacle});
    if (self)
        with_.alerts.notifyConflict(record.port, displayName, holder);
}

std::string ConflictListener::deliveryKey(const ConflictRecord& record) {
    constexpr std::chrono::seconds kEpochOf1970 = kReferenceDate.time_since_epoch();
    const double seconds =
        record.detectedAt ? (record.detectedAt->time_since_epoch() + kEpochOf1970).count() : 0.0;
    std::array<char, 512> digits{}; // more than any double has
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), seconds,
                                   std::chars_format::fixed)
                         .ptr;
    std::string time(digits.data(), end);
    if (time.find('.') == std::string::npos)
        time += ".0";
    return std::to_string(record.pid) + ':' + std::to_string(record.port) + ':' + time;
}

} // namespace zenlot
