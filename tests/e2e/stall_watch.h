// Sees for how long the event loop of a program stands: asks it for something again and again, over
// the bus, and takes the longest time until an answer.
//
// A busy machine is no fault of the program's: what the threads that a question passes waited for a
// processor meanwhile does not count. Those of the program's workers are none of them.
//
//     StallWatch watch(desktop.sessionBus(), zenlot.processId());
//     ...
//     EXPECT_LE(watch.longest(), StallWatch::kBound);
#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QString>
#include <QVariantMap>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace zenlot {

class StallWatch {
  public:
    using Milliseconds = std::chrono::milliseconds;
    static constexpr Milliseconds kBound{50};

    // The program must own its name on the bus already.
    StallWatch(QString bus, qint64 program)
        : bus_(std::move(bus)), program_(program), thread_([this] { watch(); }) {}
    StallWatch(const StallWatch&) = delete;
    StallWatch& operator=(const StallWatch&) = delete;
    ~StallWatch() { stop(); }

    // So far, and there is nothing after that.
    Milliseconds longest() {
        stop();
        return longest_;
    }
    // How often it answered.
    int answers() const { return answers_; }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr Milliseconds kPause{3};

    void stop() {
        isEnding_ = true;
        if (thread_.joinable())
            thread_.join();
    }

    void watch() {
        const QString name = QStringLiteral("e2e stalls");
        {
            const QDBusConnection connection = QDBusConnection::connectToBus(bus_, name);
            const qint64 daemon =
                connection.interface()->servicePid(QStringLiteral("org.freedesktop.DBus"));
            // What its own object refuses, and nobody before it.
            const QDBusMessage question =
                QDBusMessage::createMethodCall(
                    QStringLiteral("dev.quorvane.zenlot"), QStringLiteral("/dev/quorvane/zenlot"),
                    QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"))
                << QString() << QVariantList() << QVariantMap();
            while (!isEnding_) {
                const Clock::duration delayedBefore = delay(daemon);
                const Clock::time_point asked = Clock::now();
                const QDBusMessage answer = connection.call(question);
                const auto stood = Clock::now() - asked - (delay(daemon) - delayedBefore);
                longest_ = std::max(longest_, std::chrono::floor<Milliseconds>(stood));
                if (answer.errorName() == QLatin1String("org.freedesktop.DBus.Error.InvalidArgs"))
                    ++answers_;
                std::this_thread::sleep_for(kPause);
            }
        }
        QDBusConnection::disconnectFromBus(name);
    }

    // How long they all have been ready to run and did not. They live as long as their processes.
    Clock::duration delay(qint64 daemon) const {
        Clock::duration sum = delayOf("/proc/thread-self");
        for (const qint64 process : {static_cast<qint64>(::getpid()), daemon, program_}) {
            const std::string tasks = "/proc/" + std::to_string(process) + "/task/";
            std::error_code gone;
            for (const auto& task : std::filesystem::directory_iterator(tasks, gone)) {
                std::string name;
                std::getline(std::ifstream(task.path() / "comm"), name);
                const bool isLoop =
                    process != ::getpid() && task.path() == tasks + std::to_string(process);
                if (isLoop || name == "QDBusConnection")
                    sum += delayOf(task.path());
            }
        }
        return sum;
    }

    static Clock::duration delayOf(const std::filesystem::path& task) {
        std::chrono::nanoseconds::rep ran = 0;
        std::chrono::nanoseconds::rep waited = 0;
        std::ifstream(task / "schedstat") >> ran >> waited;
        return std::chrono::nanoseconds(waited);
    }

    const QString bus_;
    const qint64 program_;
    Milliseconds longest_{0};
    std::atomic<int> answers_{0};
    std::atomic<bool> isEnding_{false};
    std::thread thread_; // the last member
};

} // namespace zenlot
