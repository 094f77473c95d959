// A systemd of the test's own, as a user's session has one, with its bus. It reads units from its
// own folder only and ends with all that it started; nothing of it meets the session of whoever
// runs the test.
#pragma once

#include "support/temporary_folder.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

#include <sys/prctl.h>

#include <csignal>

namespace zenlot {

class PrivateUserManager {
  public:
    PrivateUserManager() {
        for (const auto& [name, text] : kUnits)
            writeUnit(name, text);
        const std::string folder = folder_.path();
        QProcessEnvironment environment;
        const std::pair<const char*, std::string> variables[] = {
            {"HOME", folder},
            {"XDG_CONFIG_HOME", folder + "/config"},
            {"XDG_DATA_HOME", folder + "/data"},
            {"XDG_RUNTIME_DIR", folder},
            {"SYSTEMD_LOG_TARGET", "console"},
            {"SYSTEMD_UNIT_PATH",
             folder + "/config/systemd/user:" + folder + "/systemd/user:" + folder + "/units"}};
        for (const auto& [name, value] : variables)
            environment.insert(QLatin1String(name), QString::fromStdString(value));
        systemd_.setProcessEnvironment(environment);
        systemd_.setProcessChannelMode(QProcess::MergedChannels);
        // Should the test crash, this must not outlive it.
        systemd_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        // Without this folder systemd believes that the machine runs something else, and refuses.
        std::error_code refused;
        const bool isMade = std::filesystem::create_directories(kBooted, refused);
        systemd_.start(QStringLiteral("/lib/systemd/systemd"), {QStringLiteral("--user")});
        systemd_.waitForStarted();
        isRunning_ =
            QTest::qWaitFor([this] { return hasEnded() || isOnBus(); }, 20'000) && !hasEnded();
        if (isMade)
            std::filesystem::remove(kBooted, refused);
    }
    PrivateUserManager(const PrivateUserManager&) = delete;
    PrivateUserManager& operator=(const PrivateUserManager&) = delete;
    ~PrivateUserManager() {
        QDBusConnection::disconnectFromBus(kConnection);
        systemd_.terminate();
        if (!systemd_.waitForFinished())
            systemd_.kill();
        systemd_.waitForFinished();
    }

    bool isRunning() const { return isRunning_; }
    // Why it does not run, in its own words.
    std::string output() { return systemd_.readAll().toStdString(); }
    QDBusConnection bus() const { return bus_; }
    pid_t processId() const { return static_cast<pid_t>(systemd_.processId()); }

    // What a command prints that a shell of that session runs.
    std::string run(const QString& command) const {
        QProcess shell;
        shell.setProcessEnvironment(systemd_.processEnvironment());
        shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
        shell.waitForFinished();
        return shell.readAllStandardOutput().trimmed().toStdString();
    }

    void writeUnit(const std::string& name, const std::string& text) const {
        folder_.write("units/" + name, text);
    }

  private:
    static constexpr char kBooted[] = "/run/systemd/system";
    static inline const QString kConnection = QStringLiteral("private user manager");
    // The least that systemd needs to run services, to be reached and to end them when it ends.
    static constexpr std::pair<const char*, const char*> kUnits[] = {
        {"basic.target", "[Unit]\nDescription=Basic\n"},
        {"shutdown.target", "[Unit]\nDescription=Shutdown\n"},
        {"default.target", "[Unit]\nRequires=dbus.service\n"},
        {"dbus.socket", "[Socket]\nListenStream=%t/bus\n"},
        {"dbus.service", "[Unit]\nRequires=dbus.socket\n[Service]\nType=notify\n"
                         "ExecStart=dbus-daemon --session --address=systemd: --nofork\n"
                         "TimeoutStopSec=1s\n"}, // for what it has started, and won't hear of
        {"exit.target", "[Unit]\nDefaultDependencies=no\nRequires=leave.service\n"},
        {"leave.service", "[Unit]\nDefaultDependencies=no\nRequires=shutdown.target\n"
                          "After=shutdown.target\nSuccessAction=exit-force\n"
                          "[Service]\nSlice=-.slice\nType=oneshot\nExecStart=/bin/true\n"}};

    bool hasEnded() const { return systemd_.state() == QProcess::NotRunning; }
    bool isOnBus() {
        if (!bus_.isConnected()) {
            QDBusConnection::disconnectFromBus(kConnection);
            bus_ = QDBusConnection::connectToBus(
                QString::fromStdString("unix:path=" + folder_.path().string() + "/bus"),
                kConnection);
        }
        return bus_.isConnected() &&
               bus_.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.systemd1"));
    }

    TemporaryFolder folder_;
    QProcess systemd_;
    QDBusConnection bus_{QString()};
    bool isRunning_{false};
};

} // namespace zenlot
