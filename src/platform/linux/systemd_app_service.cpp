#include "platform/linux/systemd_app_service.h"

#include "platform/linux/session_bus.h"
#include "text/display_line.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <thread>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr QLatin1StringView kSystemd{"org.freedesktop.systemd1"};
constexpr QLatin1StringView kManagerPath{"/org/freedesktop/systemd1"};
constexpr QLatin1StringView kManager{"org.freedesktop.systemd1.Manager"};
constexpr QLatin1StringView kNoSuchUnit{"org.freedesktop.systemd1.NoSuchUnit"};
constexpr QLatin1StringView kUnitMasked{"org.freedesktop.systemd1.UnitMasked"};

constexpr auto kBetweenLooks = 5ms;

bool isError(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ErrorMessage;
}

AppServiceError blockedError(const QString& message) {
    return {u"SMAppServiceErrorDomain"_s, 1, message};
}

AppServiceError errorOf(SystemdError code, const QString& message) {
    return {u"dev.quorvane.zenlot.systemd"_s, static_cast<qint64>(code), message};
}

AppServiceError errorFrom(const QDBusMessage& reply) {
    const QString message = displayLine(reply.errorMessage());
    if (reply.errorName() == kUnitMasked)
        return blockedError(message);
    return {displayLine(reply.errorName()), 0, message};
}

// From the reply that names the state of a unit file, or says why there is none.
AppServiceStatus statusFrom(const QDBusMessage& reply) {
    if (isError(reply))
        return AppServiceStatus::notRegistered;
    const QString unitFileState = reply.arguments().value(0).toString();
    if (unitFileState == "enabled"_L1 || unitFileState == "enabled-runtime"_L1)
        return AppServiceStatus::enabled;
    if (unitFileState == "masked"_L1 || unitFileState == "masked-runtime"_L1)
        return AppServiceStatus::requiresApproval;
    for (const auto& state : {"disabled"_L1, "indirect"_L1, "linked"_L1, "linked-runtime"_L1,
                              "alias"_L1, "static"_L1, "generated"_L1, "transient"_L1}) {
        if (unitFileState == state)
            return AppServiceStatus::notRegistered;
    }
    return AppServiceStatus::notFound;
}

// Where a unit file lies, and the state that it has there.
struct UnitFile {
    QString path;
    QString state;
};

UnitFile firstUnitFile(const QDBusMessage& reply) {
    UnitFile file;
    if (reply.signature() != "a(ss)"_L1)
        return file;
    const auto list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    if (!list.atEnd()) {
        list.beginStructure();
        list >> file.path >> file.state;
        list.endStructure();
    }
    list.endArray();
    return file;
}

} // namespace

SystemdAppService::SystemdAppService(const SessionBus& bus, QString unit, QString unitFile,
                                     SystemdPatience patience)
    : bus_([&bus] { return bus.connection(); }), unit_(std::move(unit)),
      unitFile_(std::move(unitFile)), patience_(patience) {}

SystemdAppService::SystemdAppService(const QDBusConnection& sessionBus, QString unit,
                                     QString unitFile, SystemdPatience patience)
    : bus_([sessionBus] { return sessionBus; }), unit_(std::move(unit)),
      unitFile_(std::move(unitFile)), patience_(patience) {}

bool SystemdAppService::hasManager() const {
    const QString bus = u"org.freedesktop.DBus"_s;
    QDBusMessage question =
        QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, u"NameHasOwner"_s);
    question << QString(kSystemd);
    const QDBusMessage reply =
        bus_().call(question, QDBus::Block, static_cast<int>(patience_.forStatus.count()));
    return !isError(reply) && reply.arguments().value(0).toBool();
}

AppServiceStatus SystemdAppService::status() const {
    return status(QDeadlineTimer(patience_.forStatus));
}

std::optional<AppServiceError> SystemdAppService::registerService() {
    const QDeadlineTimer deadline(patience_.forChange);
    QDBusMessage reply = callManager(u"GetUnitFileState"_s, {unit_}, deadline);
    // What nobody answers is not followed by a change that comes about later.
    if (reply.errorName() == QDBusError::errorString(QDBusError::NoReply))
        return errorFrom(reply);
    const bool wasEnabled = statusFrom(reply) == AppServiceStatus::enabled;
    // A link of an earlier time that leads nowhere any more is replaced.
    const bool isLinked = isError(reply) && QFileInfo(unitFile_).isFile();
    reply = callManager(u"EnableUnitFiles"_s,
                        {QStringList(isLinked ? unitFile_ : unit_), false, isLinked}, deadline);
    if (isError(reply))
        return errorFrom(reply);
    const bool canBeEnabled = reply.arguments().value(0).toBool();
    if (!canBeEnabled)
        return errorOf(SystemdError::cannotBeEnabled, tr("%1 cannot be enabled").arg(unit_));
    // A failure shows in what follows. Earlier ones must not count against this try.
    callManager(u"Reload"_s, {}, deadline);
    callManager(u"ResetFailedUnit"_s, {unit_}, deadline);
    std::optional<AppServiceError> error = start(deadline);
    if (error && !wasEnabled)
        withdraw(deadline);
    return error;
}

std::optional<AppServiceError> SystemdAppService::unregisterService() {
    return withdraw(QDeadlineTimer(patience_.forChange));
}

std::optional<AppServiceError> SystemdAppService::failure() const {
    const QDeadlineTimer deadline(patience_.forStatus);
    const QDBusMessage reply = callManager(u"GetUnit"_s, {unit_}, deadline);
    const QString unitPath =
        isError(reply) ? QString() : reply.arguments().value(0).value<QDBusObjectPath>().path();
    if (unitProperty(unitPath, u"Unit"_s, u"ActiveState"_s, deadline) != "failed"_L1)
        return std::nullopt;
    const QString result = unitProperty(unitPath, u"Service"_s, u"Result"_s, deadline);
    return errorOf(SystemdError::hasFailed,
                   tr("%1 has ended with a failure (%2)").arg(unit_, displayLine(result)));
}

QString SystemdAppService::unmaskCommand() const {
    const UnitFile file =
        firstUnitFile(callManager(u"ListUnitFilesByPatterns"_s, {QStringList(), QStringList(unit_)},
                                  QDeadlineTimer(patience_.forStatus)));
    const bool isForAllUsers =
        file.path.startsWith("/etc/"_L1) || file.path.startsWith("/run/systemd/"_L1);
    const QString scope = file.state == "masked-runtime"_L1 ? u"--runtime "_s : QString();
    return (isForAllUsers ? u"sudo systemctl --global "_s : u"systemctl --user "_s) + scope +
           u"unmask "_s + unit_;
}

QDBusMessage SystemdAppService::call(const QString& path, const QString& interface,
                                     const QString& method, const QVariantList& arguments,
                                     QDeadlineTimer deadline) const {
    const qint64 remaining = deadline.remainingTime();
    if (remaining <= 0)
        return QDBusMessage::createError(QDBusError::NoReply, tr("systemd did not answer in time"));
    QDBusMessage message = QDBusMessage::createMethodCall(kSystemd, path, interface, method);
    message.setArguments(arguments);
    // Nothing but a session of systemd can start its manager; others would try in vain.
    message.setAutoStartService(false);
    return bus_().call(message, QDBus::Block, static_cast<int>(remaining));
}

QDBusMessage SystemdAppService::callManager(const QString& method, const QVariantList& arguments,
                                            QDeadlineTimer deadline) const {
    return call(kManagerPath, kManager, method, arguments, deadline);
}

QString SystemdAppService::unitProperty(const QString& unitPath, const QString& interface,
                                        const QString& name, QDeadlineTimer deadline) const {
    if (unitPath.isEmpty())
        return {};
    const QDBusMessage reply = call(unitPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                                    {QString(kSystemd) + u'.' + interface, name}, deadline);
    return isError(reply) ? QString()
                          : reply.arguments().value(0).value<QDBusVariant>().variant().toString();
}

AppServiceStatus SystemdAppService::status(QDeadlineTimer deadline) const {
    return statusFrom(callManager(u"GetUnitFileState"_s, {unit_}, deadline));
}

std::optional<AppServiceError> SystemdAppService::start(QDeadlineTimer deadline) const {
    const QDBusMessage reply = callManager(u"StartUnit"_s, {unit_, u"replace"_s}, deadline);
    if (isError(reply))
        return errorFrom(reply);
    // The reply names a job. Its end is announced by a signal, which would need an event loop here.
    const QString jobPath = reply.arguments().value(0).value<QDBusObjectPath>().path();
    const uint job = jobPath.section(u'/', -1).toUInt();
    while (!isError(callManager(u"GetJob"_s, {job}, deadline)))
        std::this_thread::sleep_for(kBetweenLooks);
    const QString unitPath = callManager(u"LoadUnit"_s, {unit_}, deadline)
                                 .arguments()
                                 .value(0)
                                 .value<QDBusObjectPath>()
                                 .path();
    const QString result = unitProperty(unitPath, u"Service"_s, u"Result"_s, deadline);
    const QString state = unitProperty(unitPath, u"Unit"_s, u"ActiveState"_s, deadline);
    // A service that takes its time to start, or one nothing was learned of, has not failed.
    const bool isUnderWay = deadline.hasExpired() || state.isEmpty() || state == "active"_L1 ||
                            state == "reloading"_L1 ||
                            (state == "activating"_L1 && result == "success"_L1);
    if (isUnderWay)
        return std::nullopt;
    const QString reason = displayLine(result == "success"_L1 ? state : result);
    return errorOf(SystemdError::didNotStart, tr("%1 did not start (%2)").arg(unit_, reason));
}

std::optional<AppServiceError> SystemdAppService::withdraw(QDeadlineTimer deadline) const {
    const auto isRefused = [](const QDBusMessage& reply) {
        return isError(reply) && reply.errorName() != kNoSuchUnit;
    };
    QDBusMessage reply = callManager(u"StopUnit"_s, {unit_, u"replace"_s}, deadline);
    if (isRefused(reply))
        return errorFrom(reply);
    for (const bool isRuntime : {false, true}) {
        reply = callManager(u"DisableUnitFiles"_s, {QStringList(unit_), isRuntime}, deadline);
        if (isRefused(reply))
            return errorFrom(reply);
    }
    callManager(u"Reload"_s, {}, deadline);
    // What systemd can't disable it passes over without an error.
    switch (status(deadline)) {
    case AppServiceStatus::enabled:
        return errorOf(SystemdError::stillEnabled, tr("%1 is still enabled").arg(unit_));
    case AppServiceStatus::requiresApproval:
        return blockedError(tr("%1 is masked").arg(unit_));
    default:
        return std::nullopt;
    }
}

} // namespace zenlot
