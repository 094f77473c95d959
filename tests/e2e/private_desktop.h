// A desktop of the test's own: display, window manager, session bus and home. Nothing of it touches
// the user's, and all of it is gone at the end of the scope.
#pragma once

#include "support/session_bus_configuration.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace zenlot {

inline constexpr int kPatience = 60000; // milliseconds that a busy machine may need
// In the folder of the desktop.
inline constexpr const char* kLog = "HOME/Library/Logs/zenlot-monitor.log";
inline constexpr const char* kSettings = "XDG_CONFIG_HOME/dev.quorvane.zenlot/defaults.json";
// The settings of somebody who is told of conflicts.
inline constexpr const char* kWatching =
    R"({"conflictMonitoringEnabled": true, "hasCompletedOnboarding": true})";

inline bool waitUntil(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatience);
}

class PrivateDesktop {
  public:
    // Starts the session in an environment and gives the address of its bus.
    using StartSession = std::function<QString(const QProcessEnvironment&)>;

    // Without anything to start the session it is a bus and nothing else.
    explicit PrivateDesktop(const StartSession& startSession = {}) {
        for (const char* name : {"HOME", "TMPDIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME",
                                 "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_STATE_HOME"}) {
            const std::filesystem::path path = folder_.path() / name;
            std::filesystem::create_directory(path);
            std::filesystem::permissions(path, std::filesystem::perms::owner_all);
            set(name, QString::fromStdString(path.string()));
        }
        for (const char* name :
             {"AT_SPI_BUS_ADDRESS", "LANGUAGE", "NO_AT_BRIDGE", "QT_FATAL_WARNINGS"})
            environment_.remove(QString::fromLatin1(name));
        writeSettings(R"({"hasCompletedOnboarding": true})");
        set("GSETTINGS_BACKEND", QStringLiteral("memory"));
        set("LC_ALL", QStringLiteral("C.UTF-8"));
        set("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", QStringLiteral("1"));
        set("QT_QPA_PLATFORM", QStringLiteral("xcb"));
        // A display starts over when its last client goes, and takes those who just come with it.
        set("DISPLAY", QLatin1Char(':') +
                           firstLine(start("Xvfb -noreset -displayfd 1 -screen 0 900x4000x24")));
        set("DBUS_SESSION_BUS_ADDRESS",
            startSession
                ? startSession(environment_)
                : firstLine(
                      start(QStringLiteral("dbus-daemon"),
                            {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                             QStringLiteral("--print-address=1"),
                             QLatin1String("--config-file=") +
                                 QString::fromStdString(writeSessionBusConfiguration(folder_))})));
        start("openbox");
    }
    PrivateDesktop(const PrivateDesktop&) = delete;
    PrivateDesktop& operator=(const PrivateDesktop&) = delete;
    // What was started last may need what was started first.
    ~PrivateDesktop() {
        for (; !programs_.empty(); programs_.pop_back()) {
            programs_.back()->terminate();
            if (!programs_.back()->waitForFinished(10000))
                programs_.back()->kill();
            programs_.back()->waitForFinished();
        }
    }

    // What a user does with keyboard and mouse, in the words of xdotool. Its exit code.
    int input(const QStringList& words) {
        QProcess& process = start(QStringLiteral("xdotool"), words);
        return process.waitForFinished() ? process.exitCode() : -1;
    }
    void press(const char* key) { input({QStringLiteral("key"), QLatin1String(key)}); }

    // A command line without quotes, or a program of any name with its arguments.
    QProcess& start(const char* command) {
        QStringList words = QProcess::splitCommand(QString::fromUtf8(command));
        const QString program = words.takeFirst();
        return start(program, words);
    }
    // What is to be done in the new process before the program begins may be system calls only.
    QProcess& start(const QString& program, const QStringList& arguments,
                    const std::function<void()>& prepare = {}) {
        QProcess& process = *programs_.emplace_back(std::make_unique<QProcess>());
        process.setProcessEnvironment(environment_);
        process.setChildProcessModifier(prepare);
        process.start(program, arguments);
        if (!process.waitForStarted())
            throw std::runtime_error("can't start " + program.toStdString());
        return process;
    }

    // A web server, by a program with that name; on a port of the kernel's choice when none is
    // given.
    QProcess& startServer(const QString& name, const QString& port = QStringLiteral("0")) {
        const QString program = QString::fromStdString(folder().string()) + QLatin1Char('/') + name;
        if (!QFile::exists(program))
            QFile::copy(firstLine(start(QStringLiteral("python3"),
                                        {QStringLiteral("-c"),
                                         QStringLiteral("import sys; print(sys.executable)")})),
                        program);
        return start(program, QStringLiteral("-u -m http.server -b 127.0.0.1").split(u' ') << port);
    }
    static QString portOf(QProcess& server) { return firstLine(server).section(u' ', 5, 5); }

    // Daemons tell there where they can be reached.
    static QString firstLine(QProcess& process) {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(20000))
                throw std::runtime_error("no word from " + process.program().toStdString());
        }
        return QString::fromUtf8(process.readLine()).trimmed();
    }

    static bool hasEnded(QProcess& process) {
        return process.state() == QProcess::NotRunning || process.waitForFinished(kPatience);
    }
    // Starts servers that can't have the port until that is logged. One that is gone at once can be
    // missed; people try again.
    bool tryServers(const QString& port, std::string_view logged) {
        for (int starts = 0; starts < 20; ++starts) {
            EXPECT_TRUE(hasEnded(startServer(QStringLiteral("Refused"), port)));
            if (waitForLog(logged, kPatience / 20))
                return true;
        }
        return false;
    }

    // What the programs have logged.
    std::string log() const { return folder_.read(kLog); }
    bool waitForLog(std::string_view text, int milliseconds = kPatience) const {
        return QTest::qWaitFor([&] { return log().find(text) != std::string::npos; }, milliseconds);
    }
    std::size_t countInLog(std::string_view text) const {
        const std::string lines = log();
        std::size_t count = 0;
        for (auto at = lines.find(text); at != lines.npos; at = lines.find(text, at + 1))
            ++count;
        return count;
    }
    void writeSettings(const std::string& json) const { folder_.write(kSettings, json); }

    // The folders of its user are in there, each named after its variable.
    const TemporaryFolder& files() const { return folder_; }
    std::filesystem::path folder() const { return folder_.path(); }
    QString sessionBus() const {
        return environment_.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    }
    QString display() const { return environment_.value(QStringLiteral("DISPLAY")); }

  private:
    void set(const char* name, const QString& value) {
        environment_.insert(QString::fromLatin1(name), value);
    }

    TemporaryFolder folder_;
    QProcessEnvironment environment_ = QProcessEnvironment::systemEnvironment();
    std::vector<std::unique_ptr<QProcess>> programs_;
};

} // namespace zenlot
