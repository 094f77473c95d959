#include "background_monitor/bounded_work.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace zenlot {

struct BoundedWork::State {
    std::mutex mutex;
    std::condition_variable hasEnded;
    bool isBusy{false};
};

BoundedWork::BoundedWork(std::chrono::milliseconds longest)
    : longest_(longest), state_(std::make_shared<State>()) {}

bool BoundedWork::finishes(std::function<void()> work) {
    const auto wasDone = std::make_shared<bool>(false);
    std::unique_lock lock(state_->mutex);
    if (state_->isBusy)
        return false;
    try {
        std::thread([state = state_, wasDone, work = std::move(work)]() mutable {
            bool isDone = true;
            try {
                work();
            } catch (...) {
                isDone = false;
            }
            work = nullptr;
            const std::lock_guard end(state->mutex);
            *wasDone = isDone;
            state->isBusy = false;
            state->hasEnded.notify_all();
        }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    state_->isBusy = true; // the thread waits for the lock before it says otherwise
    state_->hasEnded.wait_for(lock, longest_, [this] { return !state_->isBusy; });
    return *wasDone;
}

} // namespace zenlot
