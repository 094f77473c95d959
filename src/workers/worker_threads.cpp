#include "workers/worker_threads.h"

#include <algorithm>
#include <chrono>

namespace zenlot {
namespace {

constexpr std::chrono::seconds kIdleTime{30};

// What QThread::create() makes runs below std::call_once(), where data races are not looked for.
class Worker final : public QThread {
  public:
    explicit Worker(std::function<void()> work) : work_(std::move(work)) {}

  private:
    void run() override { work_(); }

    const std::function<void()> work_;
};

} // namespace

WorkerThreads::WorkerThreads(int most, Starter start)
    : most_(std::max(most, 1)), start_(std::move(start)) {}

WorkerThreads::~WorkerThreads() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    hasNews_.notify_all();
    addThreadIfWanted();
    for (const auto& thread : threads_)
        thread->wait();
    // They have ended; a sanitizer sees that by the lock alone.
    const std::lock_guard lock(mutex_);
}

void WorkerThreads::post(Task task) {
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    hasNews_.notify_one();
    addThreadIfWanted();
}

void WorkerThreads::clear() {
    std::deque<Task> dropped;
    const std::lock_guard lock(mutex_);
    dropped.swap(tasks_);
}

void WorkerThreads::wait() {
    std::unique_lock lock(mutex_);
    isIdle_.wait(lock, [this] { return tasks_.empty() && free_ == working_; });
}

bool WorkerThreads::startThread(QThread& thread) {
    thread.start();
    return thread.isRunning() || thread.isFinished();
}

void WorkerThreads::addThreadIfWanted() {
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(threads_, [](const auto& thread) { return thread->isFinished(); });
        if (tasks_.size() <= static_cast<std::size_t>(free_) || working_ == most_)
            return;
        ++working_;
    }
    auto thread = std::make_unique<Worker>([this] { work(); });
    if (start_(*thread)) {
        threads_.push_back(std::move(thread));
    } else {
        const std::lock_guard lock(mutex_);
        --working_;
    }
}

void WorkerThreads::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++free_;
        isIdle_.notify_all();
        hasNews_.wait_for(lock, kIdleTime, [this] { return !tasks_.empty() || isEnding_; });
        --free_;
        if (tasks_.empty())
            break;
        {
            const Task task = std::move(tasks_.front());
            tasks_.pop_front();
            lock.unlock();
            task();
        }
        lock.lock();
    }
    --working_;
}

} // namespace zenlot
