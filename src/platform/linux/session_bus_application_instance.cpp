#include "platform/linux/session_bus_application_instance.h"

#include "platform/command.h"
#include "platform/linux/session_bus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace zenlot {

namespace {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(instanceLog, "zenlot.instance")

constexpr QLatin1StringView kName{"dev.quorvane.zenlot"};
constexpr QLatin1StringView kApplicationPath{"/dev/quorvane/zenlot"};
constexpr QLatin1StringView kApplicationInterface{"org.freedesktop.Application"};
constexpr QLatin1StringView kStartupId{"desktop-startup-id"};
constexpr QLatin1StringView kToken{"activation-token"};

// More than anybody opens at once; what exceeds it is dropped.
constexpr qsizetype kMostUris = 64;
constexpr qsizetype kLongestText = 4096;

// Numbers of the D-Bus specification.
constexpr uint kDoNotQueue = 4;
constexpr uint kPrimaryOwner = 1;
constexpr uint kExists = 3;
constexpr uint kAlreadyOwner = 4;

QVariantMap platformDataOf(const Activation& activation) {
    QVariantMap data;
    if (!activation.startupId.isEmpty())
        data.insert(kStartupId, activation.startupId);
    if (!activation.token.isEmpty())
        data.insert(kToken, activation.token);
    return data;
}

Activation activationOf(const QVariantMap& platformData) {
    return {platformData.value(kStartupId).toString().left(kLongestText),
            platformData.value(kToken).toString().left(kLongestText)};
}

QDBusMessage requestName() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"RequestName"_s);
    message << QString(kName) << kDoNotQueue;
    return message;
}

QDBusMessage requestOf(const QStringList& uris, const Activation& activation) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        kName, kApplicationPath, kApplicationInterface, uris.isEmpty() ? u"Activate"_s : u"Open"_s);
    if (!uris.isEmpty())
        message << uris;
    message << platformDataOf(activation);
    // Should the other program have ended meanwhile, this one takes its place.
    message.setAutoStartService(false);
    return message;
}

} // namespace

// Answers at once and acts from the event loop, so that nobody waits for a window to open.
class SessionBusApplicationInstance::Application final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    void setHandlers(QObject* context, Handlers handlers) {
        context_ = context;
        handlers_ = std::move(handlers);
        deliverLater();
    }

    void receive(const std::function<void(const Handlers&)>& request) {
        requests_.append(request);
        deliverLater();
    }

    // What the bus calls, by the names of the interface.
    // NOLINTBEGIN(readability-identifier-naming)
  public Q_SLOTS:
    void Activate(const QVariantMap& platform_data) {
        receive([activation = activationOf(platform_data)](const Handlers& handlers) {
            handlers.activate(activation);
        });
    }

    void Open(const QStringList& uris, const QVariantMap& platform_data) {
        QStringList opened = uris.first(std::min(uris.size(), kMostUris));
        opened.removeIf([](const QString& uri) { return uri.size() > kLongestText; });
        receive([opened, activation = activationOf(platform_data)](const Handlers& handlers) {
            handlers.open(opened, activation);
        });
    }

    void ActivateAction(const QString& action_name, const QVariantList& parameter,
                        const QVariantMap& platform_data) {
        const bool isCheck = action_name == kCheckPortCommand;
        if (action_name == kSettingsCommand || action_name == kQuitCommand ||
            (isCheck && parameter.isEmpty())) {
            Open({kCommandScheme + action_name}, platform_data);
            return;
        }
        bool isNumber = false;
        const qint64 port = parameter.value(0).toLongLong(&isNumber);
        if (!isCheck || !isNumber) {
            sendErrorReply(QDBusError::InvalidArgs, u"There is no such action"_s);
            return;
        }
        receive([port, activation = activationOf(platform_data)](const Handlers& handlers) {
            handlers.checkPort(port, activation);
        });
    }
    // NOLINTEND(readability-identifier-naming)

  private:
    void deliverLater() {
        QMetaObject::invokeMethod(this, &Application::deliver, Qt::QueuedConnection);
    }

    void deliver() {
        while (context_ && !requests_.isEmpty())
            requests_.takeFirst()(handlers_);
    }

    QPointer<QObject> context_;
    Handlers handlers_;
    QList<std::function<void(const Handlers&)>> requests_;
};

SessionBusApplicationInstance::SessionBusApplicationInstance(SessionBus& bus,
                                                             std::chrono::milliseconds patience)
    : bus_(bus), patience_(patience), application_(std::make_unique<Application>()) {}

SessionBusApplicationInstance::~SessionBusApplicationInstance() = default;

StartOutcome SessionBusApplicationInstance::start(const QStringList& uris,
                                                  const Activation& activation) {
    const StartOutcome outcome = claimOrHandOver(uris, activation);
    if (outcome == StartOutcome::handedOver || outcome == StartOutcome::notAnswered)
        return outcome;
    if (!uris.isEmpty())
        application_->receive([uris](const Handlers& handlers) { handlers.open(uris, {}); });
    QObject::connect(&bus_, &SessionBus::connected, application_.get(), [this] {
        exportApplication();
        bus_.connection().send(requestName());
    });
    return outcome;
}

void SessionBusApplicationInstance::setHandlers(QObject* context, Handlers handlers) {
    application_->setHandlers(context, std::move(handlers));
}

StartOutcome SessionBusApplicationInstance::claimOrHandOver(const QStringList& uris,
                                                            const Activation& activation) {
    if (!bus_.isConnected())
        return StartOutcome::alone;
    QDBusConnection bus = bus_.connection();
    // Before the name is owned, since calls may come with it.
    exportApplication();
    const QDeadlineTimer deadline(patience_);
    const auto ask = [&](const QDBusMessage& message) {
        const qint64 remaining = std::max<qint64>(deadline.remainingTime(), 1);
        return bus.call(message, QDBus::Block, static_cast<int>(remaining));
    };
    while (!deadline.hasExpired()) {
        const QDBusReply<uint> owner = ask(requestName());
        if (owner.value() == kPrimaryOwner || owner.value() == kAlreadyOwner)
            return StartOutcome::first;
        if (owner.value() != kExists) {
            qCInfo(instanceLog) << "Running alone:" << owner.error().message();
            return StartOutcome::alone;
        }
        const QDBusMessage answer = ask(requestOf(uris, activation));
        if (answer.type() == QDBusMessage::ReplyMessage)
            return StartOutcome::handedOver;
        // The other program may just have ended, and left the name to this one.
        const QDBusError::ErrorType error = QDBusError(answer).type();
        if (error != QDBusError::NoReply && error != QDBusError::ServiceUnknown)
            break;
    }
    return bus.isConnected() ? StartOutcome::notAnswered : StartOutcome::alone;
}

void SessionBusApplicationInstance::exportApplication() {
    bus_.connection().registerObject(kApplicationPath, application_.get(),
                                     QDBusConnection::ExportAllSlots);
}

Activation activationFromEnvironment() {
    return {qEnvironmentVariable("DESKTOP_STARTUP_ID"),
            qEnvironmentVariable("XDG_ACTIVATION_TOKEN")};
}

} // namespace zenlot

#include "session_bus_application_instance.moc"
