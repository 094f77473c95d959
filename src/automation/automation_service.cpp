#include "automation/automation_service.h"

#include "automation/check_port_adaptor.h"
#include "automation/krunner_runner.h"
#include "automation/search_provider.h"
#include "platform/bus_call.h"
#include "shell/intents/check_port_intent.h"

#include <QDBusMessage>
#include <QLoggingCategory>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(automationLog, "zenlot.automation")

// Typing makes a handful; a program that asks without end must not fill the memory.
constexpr int kMostOpenCalls = 1024;

} // namespace

AutomationService::AutomationService(QDBusConnection bus, PortAnswers& answers,
                                     AutomationTimes times)
    : bus_(std::move(bus)), answers_(answers), times_(times) {
    // They belong to this object as adaptors do.
    new CheckPortAdaptor(*this);
    new SearchProvider(*this);
    new KRunnerRunner(*this);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &AutomationService::handleTimeout);
    bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                 u"Disconnected"_s, this, SIGNAL(finished()));
}

bool AutomationService::start() {
    // The object first: whoever waits for the name may ask at once.
    noteUse();
    return bus_.registerObject(kAutomationPath, this) && bus_.registerService(kAutomationBusName);
}

QStringList AutomationService::phrases() {
    return ZenlotAppShortcuts::phrases(u"Zenlot"_s);
}

std::optional<PortQuery> AutomationService::queryFrom(const QString& text) {
    return parsePortQuery(text, phrases());
}

std::optional<PortQuery> AutomationService::queryFrom(const QStringList& words) {
    QString text;
    for (const QString& word : words) {
        if (text.size() + word.size() > kLongestQuery)
            return std::nullopt;
        text += word + u' ';
    }
    return queryFrom(text);
}

void AutomationService::reply(const QDBusMessage& call, const QList<PortQuery>& queries,
                              std::function<QVariant(const QStringList& dialogs)> resultFrom) {
    noteUse();
    call.setDelayedReply(true);
    if (!call.isReplyRequired())
        return;
    if (openCalls_ >= kMostOpenCalls) {
        bus_.send(call.createErrorReply(QDBusError::LimitsExceeded,
                                        u"There are too many questions at once"_s));
        return;
    }
    beginCall();
    answers_.answer(queries, this,
                    [this, call, resultFrom = std::move(resultFrom)](const QStringList& dialogs) {
                        bus_.send(call.createReply(resultFrom(dialogs)));
                        endCall();
                    });
}

void AutomationService::openMainWindow(const PortQuery& query, const QString& activationToken) {
    noteUse();
    if (openCalls_ >= kMostOpenCalls)
        return;
    QVariantMap platformData;
    if (!activationToken.isEmpty())
        platformData.insert(u"activation-token"_s, activationToken);
    const bool hasPort = query.port && isValidPort(*query.port);
    // The bus starts the application where it does not run.
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"dev.quorvane.zenlot"_s, u"/dev/quorvane/zenlot"_s, u"org.freedesktop.Application"_s,
        hasPort ? u"ActivateAction"_s : u"Activate"_s);
    if (hasPort)
        call << u"check-port"_s << QVariantList{qlonglong{*query.port}};
    call << platformData;
    beginCall(); // the bus forgets what somebody wanted who has left before the application came
    whenAnswered<void>(bus_.asyncCall(call), this, [this](const QDBusPendingReply<void>& answer) {
        if (answer.isError())
            qCInfo(automationLog) << "Can't open the window:" << answer.error().message();
        endCall();
    });
}

void AutomationService::noteUse() {
    if (openCalls_ == 0)
        timer_.start(isLeaving_ ? times_.farewell : times_.idle);
}

void AutomationService::beginCall() {
    ++openCalls_;
    timer_.stop();
}

void AutomationService::endCall() {
    --openCalls_;
    noteUse();
}

void AutomationService::handleTimeout() {
    if (std::exchange(isLeaving_, true)) {
        Q_EMIT finished();
        return;
    }
    QDBusMessage release =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"ReleaseName"_s);
    release << QString(kAutomationBusName);
    // What was sent to the name comes before the answer to this.
    beginCall();
    whenAnswered<void>(bus_.asyncCall(release), this,
                       [this](const QDBusPendingReply<void>& /*answer*/) { endCall(); });
}

} // namespace zenlot
