#include "automation/automation_service.h"

#include "automation/krunner_runner.h"
#include "automation/search_provider.h"
#include "shell/intents/check_port_intent.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>

#include <utility>

namespace zenlot {
namespace {

class AutomationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "dev.quorvane.zenlot.Automation")

  public:
    explicit AutomationAdaptor(AutomationService& service)
        : QDBusAbstractAdaptor(&service), service_(service) {}

  public Q_SLOTS:
    // NOLINTNEXTLINE(readability-identifier-naming): a name on the bus
    QString CheckPort(qlonglong portNumber, const QDBusMessage& call) {
        service_.reply(call, PortQuery{portNumber},
                       [](const QString& dialog) { return QVariant(dialog); });
        return {};
    }

  private:
    AutomationService& service_;
};

} // namespace

AutomationService::AutomationService(QDBusConnection bus, PortAnswers& answers,
                                     std::chrono::milliseconds idleTime)
    : bus_(std::move(bus)), answers_(answers) {
    // They belong to this object as adaptors do.
    new AutomationAdaptor(*this);
    new SearchProvider(*this);
    new KRunnerRunner(*this);
    idle_.setSingleShot(true);
    idle_.setInterval(idleTime);
    connect(&idle_, &QTimer::timeout, this, &AutomationService::becameIdle);
}

bool AutomationService::start() {
    // The object first: whoever waits for the name may ask at once.
    noteUse();
    return bus_.registerObject(kAutomationPath, this) && bus_.registerService(kAutomationBusName);
}

std::optional<PortQuery> AutomationService::queryFrom(const QString& text) const {
    return parsePortQuery(text, ZenlotAppShortcuts::phrases(QStringLiteral("Zenlot")));
}

void AutomationService::reply(const QDBusMessage& call, const PortQuery& query,
                              std::function<QVariant(const QString& dialog)> resultFrom) {
    noteUse();
    call.setDelayedReply(true);
    const auto send = [bus = bus_, call,
                       resultFrom = std::move(resultFrom)](const QString& dialog) {
        bus.send(call.createReply(resultFrom(dialog)));
    };
    if (query.port)
        answers_.answer(*query.port, this, send);
    else
        send(CheckPortIntent::valueRequestDialog());
}

void AutomationService::openMainWindow(const PortQuery& query, const QString& activationToken) {
    noteUse();
    QVariantMap platformData;
    if (!activationToken.isEmpty())
        platformData.insert(QStringLiteral("activation-token"), activationToken);
    const bool hasPort = query.port && isValidPort(*query.port);
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("dev.quorvane.zenlot"), QStringLiteral("/dev/quorvane/zenlot"),
        QStringLiteral("org.freedesktop.Application"),
        hasPort ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
    if (hasPort)
        call << QStringLiteral("check-port") << QVariantList{QVariant::fromValue(*query.port)};
    call << platformData;
    bus_.send(call);
}

} // namespace zenlot

#include "automation_service.moc"
