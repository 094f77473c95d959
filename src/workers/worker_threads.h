// Threads on which an object does what its own thread must not wait for.
//
//     WorkerThreads workers_{1}; // the last member, so that it ends before what its work uses
//     const QFuture<Rows> rows = workers_.run([this] { return readRows(); });
//
// A thread is started when there is work that no other one is free for, and ends after half a
// minute without any. Work is begun in the order in which it came. The end of this object waits for
// all of it.
//
// Where the system has no thread left, work waits until one of ours is free, or until a thread can
// be had when more work comes. What still waits for a first thread at the end of this object is
// dropped, and its future is never finished. (QThreadPool waits forever then.)
//
// Its operations are for one thread, the owner's.
#pragma once

#include <QFuture>
#include <QFutureInterface>
#include <QPromise>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace zenlot {

class WorkerThreads {
  public:
    using Task = std::function<void()>;
    // Starts a thread; false when the system refuses.
    using Starter = std::function<bool(QThread&)>;

    explicit WorkerThreads(int most = QThread::idealThreadCount(), Starter start = startThread);
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
    ~WorkerThreads();

    // What the work returns or throws comes with the future. Work whose future was cancelled before
    // it began is not done.
    template <typename Work>
    QFuture<std::invoke_result_t<Work>> run(Work work) {
        using Result = std::invoke_result_t<Work>;
        // No promise: whoever takes the result out of the future at once sets its state back, and
        // the end of a promise would then report another result, which there isn't.
        QFutureInterface<Result> answer;
        answer.reportStarted();
        auto kept = std::make_shared<Work>(std::move(work));
        post([answer, kept]() mutable {
            if (!answer.isCanceled()) {
                try {
                    if constexpr (std::is_void_v<Result>)
                        (*kept)();
                    else
                        answer.reportResult((*kept)());
                } catch (...) {
                    answer.reportException(std::current_exception());
                }
            }
            answer.reportFinished();
        });
        return answer.future();
    }

    // The same for work that wants to see whether its future was cancelled meanwhile. The result
    // may not be taken out of the future, only read.
    template <typename Result, typename Work>
    QFuture<Result> runWithPromise(Work work) {
        // The promise is made late: it would finish the future also of work that is dropped,
        // without a result, which would end a program that awaits one.
        QFutureInterface<Result> answer;
        answer.reportStarted();
        auto kept = std::make_shared<Work>(std::move(work));
        post([answer, kept] {
            QPromise<Result> promise(answer);
            if (!promise.isCanceled()) {
                try {
                    (*kept)(promise);
                } catch (...) {
                    promise.setException(std::current_exception());
                }
            }
            promise.finish();
        });
        return answer.future();
    }

    // Without a future; the task does not throw.
    void post(Task task);

    // Drops what was not begun.
    void clear();

    // Until nothing is left to do.
    void wait();

  private:
    static bool startThread(QThread& thread);
    void addThreadIfWanted();
    void work();

    const int most_;
    const Starter start_;
    std::vector<std::unique_ptr<QThread>> threads_;

    std::mutex mutex_;                // of all that follows
    std::condition_variable hasNews_; // there is work, or the end
    std::condition_variable isIdle_;
    std::deque<Task> tasks_;
    int working_{0}; // threads that have not come to their end
    int free_{0};    // those of them that wait for a task
    bool isEnding_{false};
};

} // namespace zenlot
