// A program of ours as a child of this one, where no service manager minds it. It is started when
// it is registered, started again when it crashes, and ends with this program, however that ends.
//
//     ChildAppService monitor(program, {"--wait"});
//
// Statuses: enabled while it is registered, not registered otherwise; nothing is remembered beyond
// the end of this program. Like a service manager it gives up a child that crashes too often, which
// failure() tells, until it is registered again. A child that ends by itself is left alone.
//
// Errors have the domain "dev.quorvane.zenlot.child" and a ChildError as code.
//
// Belongs to the main thread, which runs the child; registering and asking may come from any
// thread, and do not wait for it. The end of the object waits for the end of the child.
#pragma once

#include "platform/app_service.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <deque>

namespace zenlot {

enum class ChildError : int {
    cannotRun = 1, // there is no such program
    hasFailed = 2, // too often
};

struct ChildPatience {
    std::chrono::milliseconds beforeRestart{2000};
    std::chrono::milliseconds forEnd{5000};
};

class ChildAppService final : public AppService {
    Q_DECLARE_TR_FUNCTIONS(zenlot::ChildAppService)

  public:
    // The program has a full path.
    ChildAppService(QString program, QStringList arguments, ChildPatience patience = {});
    ~ChildAppService() override;

    AppServiceStatus status() const override;
    std::optional<AppServiceError> registerService() override;
    std::optional<AppServiceError> unregisterService() override;
    std::optional<AppServiceError> failure() const override;

  private:
    void follow();
    void start();
    void handleEnd(bool isFailure);

    const QString program_;
    const QStringList arguments_;
    const ChildPatience patience_;
    std::atomic<bool> isRegistered_{false};
    std::atomic<bool> isGivenUp_{false};
    std::deque<std::chrono::steady_clock::time_point> crashes_;
    QTimer restart_;
    QTimer kill_;
    QProcess child_;
};

} // namespace zenlot
