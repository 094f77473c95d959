// The login item for the main thread, which waits for no disk: what is asked for is done by a
// worker, in the order in which it came. Why something failed is not told.
//
//     LoginItem item(autostart);
//     const QFuture<void> look = item.look();
//     co_await look;
#pragma once

#include "platform/app_service.h"
#include "workers/worker_threads.h"

#include <QFuture>

#include <atomic>

namespace zenlot {

class LoginItem final : public AppService {
  public:
    // The reference must outlive the object.
    explicit LoginItem(AppService& item) : item_(item) {}

    QFuture<void> look() {
        return worker_.run([this] { status_ = item_.status(); });
    }

    // As of the last look.
    AppServiceStatus status() const override { return status_; }

    std::optional<AppServiceError> registerService() override {
        worker_.post([this] { static_cast<void>(item_.registerService()); });
        return std::nullopt;
    }

    std::optional<AppServiceError> unregisterService() override {
        worker_.post([this] { static_cast<void>(item_.unregisterService()); });
        return std::nullopt;
    }

  private:
    AppService& item_;
    std::atomic<AppServiceStatus> status_{AppServiceStatus::notRegistered};
    WorkerThreads worker_{1}; // the last member
};

} // namespace zenlot
