#include "platform/linux/pidfd_process_end_watch.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace zenlot {
namespace {

class PidfdWatch final : public ProcessEndWatch::Watch {
  public:
    PidfdWatch(std::int64_t pid, std::function<void()> ended) : ended_(std::move(ended)) {
        if (pid < 1 || !std::in_range<pid_t>(pid))
            return;
        pidfd_ = static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0));
        if (pidfd_ >= 0) {
            notifier_ = new QSocketNotifier(pidfd_, QSocketNotifier::Read);
            QObject::connect(notifier_, &QSocketNotifier::activated, &context_, [this] { tell(); });
        } else if (errno == ESRCH) {
            QTimer::singleShot(0, &context_, [this] { tell(); });
        }
    }
    PidfdWatch(const PidfdWatch&) = delete;
    PidfdWatch& operator=(const PidfdWatch&) = delete;
    ~PidfdWatch() override {
        // It may be the one that calls.
        if (notifier_) {
            notifier_->setEnabled(false);
            notifier_->deleteLater();
        }
        if (pidfd_ >= 0)
            ::close(pidfd_);
    }

  private:
    // What is called may end this object.
    void tell() {
        if (notifier_)
            notifier_->setEnabled(false);
        if (const std::function<void()> ended = std::exchange(ended_, {}))
            ended();
    }

    std::function<void()> ended_;
    int pidfd_{-1};
    QSocketNotifier* notifier_{nullptr};
    QObject context_;
};

} // namespace

std::unique_ptr<ProcessEndWatch::Watch> PidfdProcessEndWatch::watch(std::int64_t pid,
                                                                    std::function<void()> ended) {
    return std::make_unique<PidfdWatch>(pid, std::move(ended));
}

} // namespace zenlot
