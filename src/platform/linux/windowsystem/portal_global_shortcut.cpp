#include "platform/linux/windowsystem/portal_global_shortcut.h"

#include "platform/bus_call.h"
#include "platform/linux/bus_name_owner.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/windowsystem/activation_acceptance.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QWindow>

#include <utility>

namespace zenlot {

namespace {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(portalShortcutLog, "zenlot.shortcut")

constexpr QLatin1StringView kPortal{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView kPortalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView kInterface{"org.freedesktop.portal.GlobalShortcuts"};
constexpr QLatin1StringView kShortcut{"show-window"};

// What the portal calls (sa{sv}).
struct WantedShortcut {
    QString identifier;
    QVariantMap properties;
};

QDBusArgument& operator<<(QDBusArgument& argument, const WantedShortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.identifier << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, WantedShortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.identifier >> shortcut.properties;
    argument.endStructure();
    return argument;
}

// A session of the portal, begun again when the portal has been. The caller chooses the names of
// its sessions and requests, so that it can listen before it asks.
class PortalSession final : public QObject, public GlobalShortcut::Monitor {
    Q_OBJECT

  public:
    PortalSession(SessionBus& bus, int& sessions, GlobalShortcut::Handler handler)
        : bus_(bus), sessions_(sessions), handler_(std::move(handler)) {
        qDBusRegisterMetaType<QDBusObjectPath>();
        qDBusRegisterMetaType<WantedShortcut>();
        qDBusRegisterMetaType<QList<WantedShortcut>>();
        connect(&portal_, &BusNameOwner::changed, this, &PortalSession::handlePortalOwner);
        connect(&bus_, &SessionBus::connected, this, &PortalSession::followBus);
        followBus();
    }
    PortalSession(const PortalSession&) = delete;
    PortalSession& operator=(const PortalSession&) = delete;
    ~PortalSession() override {
        QDBusMessage message = QDBusMessage::createMethodCall(
            kPortal, path("session"_L1), u"org.freedesktop.portal.Session"_s, u"Close"_s);
        message.setAutoStartService(false);
        bus_.connection().send(message);
    }

  private Q_SLOTS:
    void bind(uint refusal, const QVariantMap& /*results*/, const QDBusMessage& signal) {
        if (!isFromPortal(signal))
            return;
        if (refusal != 0) {
            qCInfo(portalShortcutLog) << "The desktop refuses a global shortcut.";
            return;
        }
        const QList<WantedShortcut> wanted{
            {kShortcut,
             {{u"description"_s, QCoreApplication::translate("GlobalShortcut", "Open Zenlot")},
              {u"preferred_trigger"_s, u"CTRL+ALT+SHIFT+p"_s}}}};
        QDBusMessage message = callOfPortal(kInterface, u"BindShortcuts"_s);
        message << QVariant::fromValue(QDBusObjectPath(path("session"_L1)))
                << QVariant::fromValue(wanted) << QString()
                << QVariantMap{{u"handle_token"_s, token() + "_bind"_L1}};
        bus_.connection().send(message);
    }

    void handlePress(const QDBusObjectPath& session, const QString& shortcut,
                     qulonglong /*milliseconds*/, const QVariantMap& options,
                     const QDBusMessage& signal) {
        if (!isFromPortal(signal) || session.path() != path("session"_L1) ||
            shortcut != kShortcut || QGuiApplication::focusWindow())
            return;
        acceptActivation({{}, options.value(u"activation_token"_s).toString()});
        // The handler may end this very session, so what runs is a copy.
        const GlobalShortcut::Handler handler = handler_;
        handler();
    }

    void handlePortalOwner() {
        if (portal_.owner().isEmpty())
            isLost_ = true;
        else if (isLost_)
            begin();
    }

  private:
    // Every program on the bus may send such signals.
    bool isFromPortal(const QDBusMessage& signal) const {
        return !portal_.owner().isEmpty() && signal.service() == portal_.owner();
    }

    static QDBusMessage callOfPortal(const QString& interface, const QString& method) {
        return QDBusMessage::createMethodCall(kPortal, kPortalPath, interface, method);
    }

    QString token() const { return u"zenlot_%1"_s.arg(session_); }

    // Of the session or of the request for it: below the caller's address, written as one word.
    QString path(QLatin1StringView kind) const {
        const QString address = bus_.connection().baseService().mid(1).replace(u'.', u'_');
        return QStringList{kPortalPath, kind, address, token()}.join(u'/');
    }

    // Signals are not bound to the portal's name, since Qt would wait for the bus to look it up.
    void followBus() {
        QDBusConnection bus = bus_.connection();
        if (!bus.isConnected())
            return;
        portal_.follow(bus);
        bus.connect(
            QString(), kPortalPath, kInterface, u"Activated"_s, this,
            SLOT(handlePress(QDBusObjectPath, QString, qulonglong, QVariantMap, QDBusMessage)));
        begin();
    }

    void begin() {
        isLost_ = false;
        session_ = ++sessions_;
        QDBusConnection bus = bus_.connection();
        // Portals that register programs take the name from it; others know no such call.
        QDBusMessage registration =
            callOfPortal(u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
        registration << u"dev.quorvane.zenlot"_s << QVariantMap();
        bus.send(registration);

        bus.connect(QString(), path("request"_L1), u"org.freedesktop.portal.Request"_s,
                    u"Response"_s, this, SLOT(bind(uint, QVariantMap, QDBusMessage)));
        QDBusMessage message = callOfPortal(kInterface, u"CreateSession"_s);
        message << QVariantMap{{u"handle_token"_s, token()}, {u"session_handle_token"_s, token()}};
        whenAnswered<QDBusObjectPath>(bus.asyncCall(message), this,
                                      [this](const QDBusPendingReply<QDBusObjectPath>& answer) {
                                          isLost_ = answer.isError();
                                      });
    }

    SessionBus& bus_;
    BusNameOwner portal_{kPortal};
    int& sessions_; // of all monitors, so that no two share a name
    int session_{0};
    GlobalShortcut::Handler handler_;
    bool isLost_{false};
};

} // namespace

std::unique_ptr<GlobalShortcut::Monitor> PortalGlobalShortcut::install(Handler handler) {
    return std::make_unique<PortalSession>(bus_, sessions_, std::move(handler));
}

} // namespace zenlot

#include "portal_global_shortcut.moc"
