// An AppService for tests. It counts what it is asked and refuses when told to.
#pragma once

#include "platform/app_service.h"

namespace zenlot {

class FakeAppService final : public AppService {
  public:
    AppServiceStatus currentStatus{AppServiceStatus::notRegistered};
    AppServiceStatus statusAfterRegistering{AppServiceStatus::enabled};
    std::optional<AppServiceError> refusal;
    std::optional<AppServiceError> currentFailure;
    int registerCalls{0};
    int unregisterCalls{0};

    AppServiceStatus status() const override { return currentStatus; }
    std::optional<AppServiceError> failure() const override { return currentFailure; }

    std::optional<AppServiceError> registerService() override {
        ++registerCalls;
        if (!refusal)
            currentStatus = statusAfterRegistering;
        return refusal;
    }

    std::optional<AppServiceError> unregisterService() override {
        ++unregisterCalls;
        if (!refusal)
            currentStatus = AppServiceStatus::notRegistered;
        return refusal;
    }
};

} // namespace zenlot
