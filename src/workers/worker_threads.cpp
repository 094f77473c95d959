#include "workers/worker_threads.h"

#include <algorithm>
#include <chrono>

namespace zenlot {
namespace {

constexpr std::chrono::seconds kIdleTime{30};

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
    std::erase_if(threads_, [](const auto& thread) { return thread->isFinished(); });
    {
        const std::lock_guard lock(mutex_);
        if (tasks_.size() <= static_cast<std::size_t>(free_) || working_ == most_)
            return;
        ++working_;
    }
    std::unique_ptr<QThread> thread(QThread::create([this] { work(); }));
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
