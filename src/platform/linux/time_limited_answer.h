// The answer to a question whose asker must not wait for ever: what is given first counts, and a
// fallback counts when nothing is given in time, or by anybody who still could.
//
//     auto answer = std::make_shared<TimeLimitedAnswer<bool>>(10s, false);
//     QFuture<bool> future = answer->future();
//     ask([answer](bool isPresent) { answer->give(isPresent); });
//
// Belongs to one thread, which needs an event loop.
#pragma once

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QTimer>

#include <chrono>
#include <utility>

namespace zenlot {

template <class Answer>
class TimeLimitedAnswer final {
  public:
    TimeLimitedAnswer(std::chrono::milliseconds timeout, Answer fallback)
        : future_(promise_.future()), fallback_(std::move(fallback)) {
        promise_.start();
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { give(fallback_); });
        timer_.start(timeout);
    }
    TimeLimitedAnswer(const TimeLimitedAnswer&) = delete;
    TimeLimitedAnswer& operator=(const TimeLimitedAnswer&) = delete;
    ~TimeLimitedAnswer() { give(fallback_); }

    QFuture<Answer> future() const { return future_; }
    bool isGiven() const { return isGiven_; }

    // May run code of the asker, and with it the end of this object.
    void give(Answer answer) {
        if (std::exchange(isGiven_, true))
            return;
        timer_.stop();
        QPromise<Answer> promise = std::move(promise_);
        promise.addResult(std::move(answer));
        promise.finish();
    }

  private:
    QPromise<Answer> promise_;
    QFuture<Answer> future_;
    Answer fallback_;
    QTimer timer_;
    bool isGiven_{false};
};

} // namespace zenlot
