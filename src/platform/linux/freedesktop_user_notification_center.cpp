#include "platform/linux/freedesktop_user_notification_center.h"

#include "platform/linux/session_bus.h"

#include <QThread>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

UserNotificationError noAnswer() {
    return {u"The notification service did not answer"_s};
}

AuthorizationAnswer authorizationFrom(const NotificationServer::Introduction& introduction) {
    return {introduction.capabilities.has_value(), introduction.error};
}

UserNotificationSettings settingsFrom(const NotificationServer::Introduction& introduction) {
    UserNotificationSettings settings;
    if (const auto& capabilities = introduction.capabilities) {
        settings.authorizationStatus = AuthorizationStatus::authorized;
        settings.alertSetting = UserNotificationSetting::enabled;
        settings.soundSetting = capabilities->playsSounds ? UserNotificationSetting::enabled
                                                          : UserNotificationSetting::notSupported;
    } else if (!introduction.error) {
        settings.authorizationStatus = AuthorizationStatus::denied;
    }
    return settings;
}

} // namespace

FreedesktopUserNotificationCenter::FreedesktopUserNotificationCenter(
    QDBusConnection bus, std::chrono::milliseconds answerTimeout)
    : bus_(std::move(bus)), answerTimeout_(answerTimeout), server_(makeServer()) {
    connect(&owner_, &BusNameOwner::changed, this, [this] {
        // What was asked of a service that didn't run has started this one.
        if (server_->isRunning())
            replaceServer(owner_.owner());
        else
            server_->setOwner(owner_.owner());
        if (const ArrivalHandler handler = arrivalHandler_; handler && server_->isRunning())
            handler();
    });
    owner_.follow(bus_);
}

FreedesktopUserNotificationCenter::FreedesktopUserNotificationCenter(
    const SessionBus& bus, std::chrono::milliseconds answerTimeout)
    : FreedesktopUserNotificationCenter(bus.connection(), answerTimeout) {
    connect(&bus, &SessionBus::connected, this, [this, &bus] {
        bus_ = bus.connection();
        replaceServer(QString());
        owner_.follow(bus_);
    });
}

void FreedesktopUserNotificationCenter::replaceServer(const QString& newOwner) {
    // The old run ends last, since the answers that it still owes may run code of the askers.
    const std::unique_ptr<NotificationServer> ended = std::exchange(server_, makeServer());
    server_->succeed(*ended);
    server_->setOwner(newOwner);
}

std::unique_ptr<NotificationServer> FreedesktopUserNotificationCenter::makeServer() {
    auto server = std::make_unique<NotificationServer>(bus_);
    connect(server.get(), &NotificationServer::actionChosen, this,
            &FreedesktopUserNotificationCenter::respond);
    return server;
}

void FreedesktopUserNotificationCenter::setResponder(Responder responder) {
    responder_ = std::move(responder);
}

void FreedesktopUserNotificationCenter::setArrivalHandler(ArrivalHandler handler) {
    arrivalHandler_ = std::move(handler);
}

template <class Answer, class Convert>
QFuture<Answer> FreedesktopUserNotificationCenter::askServer(const Answer& fallback,
                                                             Convert convert) {
    Q_ASSERT(QThread::currentThread() == thread());
    const auto answer = std::make_shared<TimeLimitedAnswer<Answer>>(answerTimeout_, fallback);
    QFuture<Answer> future = answer->future();
    server_->introduce([answer, convert](const NotificationServer::Introduction& introduction) {
        answer->give(convert(introduction));
    });
    return future;
}

QFuture<AuthorizationAnswer> FreedesktopUserNotificationCenter::requestAuthorization() {
    return askServer(AuthorizationAnswer{false, noAnswer()}, authorizationFrom);
}

QFuture<UserNotificationSettings> FreedesktopUserNotificationCenter::notificationSettings() {
    return askServer(UserNotificationSettings{}, settingsFrom);
}

QFuture<std::optional<UserNotificationError>>
FreedesktopUserNotificationCenter::add(const UserNotificationRequest& request) {
    Q_ASSERT(QThread::currentThread() == thread());
    const auto answer = std::make_shared<NotificationServer::AddAnswer>(answerTimeout_, noAnswer());
    QFuture<std::optional<UserNotificationError>> future = answer->future();
    server_->show({request, answer});
    return future;
}

void FreedesktopUserNotificationCenter::remove(const QString& identifier) {
    server_->withdraw(identifier);
}

void FreedesktopUserNotificationCenter::respond(const QString& alertIdentifier,
                                                const QString& actionIdentifier) {
    if (const Responder responder = responder_) // which may be replaced by what it does
        responder(alertIdentifier, actionIdentifier);
}

} // namespace zenlot
