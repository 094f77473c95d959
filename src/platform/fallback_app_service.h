// Two services for the same thing: the desktop's own, and one that does as well where the desktop
// has none.
//
//     FallbackAppService monitor(systemd, child, [&] { return systemd.hasManager(); });
//
// Which of them counts is asked at each call, which may come from any thread.
#pragma once

#include "platform/app_service.h"

#include <functional>
#include <utility>

namespace zenlot {

class FallbackAppService final : public AppService {
  public:
    // Both must outlive the object.
    FallbackAppService(AppService& desktops, AppService& own, std::function<bool()> hasDesktops)
        : desktops_(desktops), own_(own), hasDesktops_(std::move(hasDesktops)) {}

    AppServiceStatus status() const override { return current().status(); }
    std::optional<AppServiceError> failure() const override { return current().failure(); }

    std::optional<AppServiceError> registerService() override {
        AppService& service = current();
        if (&service == &desktops_)
            static_cast<void>(own_.unregisterService());
        return service.registerService();
    }

    std::optional<AppServiceError> unregisterService() override {
        const std::optional<AppServiceError> error = own_.unregisterService();
        return hasDesktops_() ? desktops_.unregisterService() : error;
    }

  private:
    AppService& current() const { return hasDesktops_() ? desktops_ : own_; }

    AppService& desktops_;
    AppService& own_;
    std::function<bool()> hasDesktops_;
};

} // namespace zenlot
