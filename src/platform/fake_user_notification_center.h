// A UserNotificationCenter for tests: it shows nothing, remembers what it was given and answers
// what the test has set. While `isSilent`, questions stay open until answer().
//
//     FakeUserNotificationCenter alerts;
//     manager.notifyConflict(3000, u"node"_s, 42);
//     alerts.respond(alerts.requests.back(), PortNotificationManager::killActionID);
#pragma once

#include "platform/user_notification_center.h"

#include <QPromise>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace zenlot {

class FakeUserNotificationCenter final : public UserNotificationCenter {
  public:
    AuthorizationAnswer authorization{true, std::nullopt};
    UserNotificationSettings settings{AuthorizationStatus::authorized,
                                      UserNotificationSetting::enabled,
                                      UserNotificationSetting::enabled};
    std::optional<UserNotificationError> refusal; // of what is added
    bool isSilent{false};

    Responder responder;
    ArrivalHandler arrivalHandler;
    std::vector<UserNotificationRequest> requests;
    QStringList removed; // the identifiers

    // Answers everything that is open with what is set now.
    void answer() {
        for (const std::function<void()>& give : std::exchange(open_, {}))
            give();
    }

    // The user chooses an action.
    void respond(const UserNotificationRequest& request, const QString& actionIdentifier) const {
        responder(request.identifier, actionIdentifier);
    }

    void setResponder(Responder newResponder) override { responder = std::move(newResponder); }

    void setArrivalHandler(ArrivalHandler handler) override { arrivalHandler = std::move(handler); }

    QFuture<AuthorizationAnswer> requestAuthorization() override { return ask(authorization); }

    QFuture<UserNotificationSettings> notificationSettings() override { return ask(settings); }

    QFuture<std::optional<UserNotificationError>>
    add(const UserNotificationRequest& request) override {
        requests.push_back(request);
        return ask(refusal);
    }

    void remove(const QString& identifier) override { removed.append(identifier); }

  private:
    template <class Answer>
    QFuture<Answer> ask(const Answer& current) {
        const auto promise = std::make_shared<QPromise<Answer>>();
        promise->start();
        QFuture<Answer> future = promise->future();
        open_.emplace_back([promise, &current] {
            promise->addResult(current);
            promise->finish();
        });
        if (!isSilent)
            answer();
        return future;
    }

    std::vector<std::function<void()>> open_;
};

} // namespace zenlot
