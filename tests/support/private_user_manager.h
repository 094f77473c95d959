// A systemd of the test's own, as a user's session has one, with its bus. It reads units from the
// folders of its user only and ends with all that it started; nothing of it meets the session of
// whoever runs the test.
#pragma once

#include "support/session_bus_configuration.h"
#include "support/temporary_folder.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace zenlot {

class PrivateUserManager {
  public:
    // Its user has one folder for everything.
    PrivateUserManager() : PrivateUserManager(QProcessEnvironment()) {}
    // What it starts gets this environment, which names the folders of its user.
    explicit PrivateUserManager(QProcessEnvironment environment) {
        for (const auto& [name, text] : kUnits)
            writeUnit(name, text);
        writeUnit("dbus.service",
                  "[Unit]\nRequires=dbus.socket\n[Service]\nType=notify\n"
                  "ExecStart=dbus-daemon --address=systemd: --nofork --config-file=" +
                      writeSessionBusConfiguration(folder_).string() +
                      "\nTimeoutStopSec=1s\n"); // for what it has started, and won't hear of
        const QString folder = QString::fromStdString(folder_.path().string());
        const auto set = [&environment](const char* name, const QString& value) {
            environment.insert(QLatin1String(name), value);
        };
        if (environment.isEmpty()) {
            set("HOME", folder);
            set("XDG_CONFIG_HOME", folder + QLatin1String("/config"));
            set("XDG_DATA_HOME", folder + QLatin1String("/data"));
            set("XDG_RUNTIME_DIR", folder);
        }
        QString unitFolders;
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            unitFolders += environment.value(QLatin1String(name)) + QLatin1String("/systemd/user:");
        set("SYSTEMD_UNIT_PATH", unitFolders + folder + QLatin1String("/units"));
        set("SYSTEMD_LOG_TARGET", QStringLiteral("console"));
        address_ = QLatin1String("unix:path=") +
                   environment.value(QLatin1String("XDG_RUNTIME_DIR")) + QLatin1String("/bus");
        systemd_.setProcessEnvironment(environment);
        systemd_.setProcessChannelMode(QProcess::MergedChannels);
        // Should the test crash, this must not outlive it.
        systemd_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        const Booted booted;
        systemd_.start(QString::fromLatin1(kManager), {QStringLiteral("--user")});
        systemd_.waitForStarted();
        isRunning_ = waitForBus();
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
    QString busAddress() const { return address_; }
    QDBusConnection bus() const { return bus_; }
    pid_t processId() const { return static_cast<pid_t>(systemd_.processId()); }

    // As an update does it: another program in the same process, and the services go on.
    bool startAnew() {
        const Booted booted;
        const QString before = nameOnBus();
        run(QStringLiteral("systemctl --user daemon-reexec"));
        return QTest::qWaitFor([&] { return hasEnded() || nameOnBus() != before; }, 20'000) &&
               waitForBus();
    }

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
    static constexpr char kManager[] = "/lib/systemd/systemd";
    static constexpr char kBooted[] = "/run/systemd/system";
    static inline const QString kConnection = QStringLiteral("private user manager");
    // The least that systemd needs to run services, to be reached and to end them when it ends.
    static constexpr std::pair<const char*, const char*> kUnits[] = {
        {"basic.target", "[Unit]\nDescription=Basic\n"},
        {"shutdown.target", "[Unit]\nDescription=Shutdown\n"},
        {"default.target", "[Unit]\nRequires=dbus.service\n"},
        {"dbus.socket", "[Socket]\nListenStream=%t/bus\n"},
        {"exit.target", "[Unit]\nDefaultDependencies=no\nRequires=leave.service\n"},
        {"leave.service", "[Unit]\nDefaultDependencies=no\nRequires=shutdown.target\n"
                          "After=shutdown.target\nSuccessAction=exit-force\n"
                          "[Service]\nSlice=-.slice\nType=oneshot\nExecStart=/bin/true\n"}};

    // Without this folder systemd believes that the machine runs something else, and refuses.
    class Booted {
      public:
        Booted() : isMade_(std::filesystem::create_directories(kBooted, refused_)) {}
        Booted(const Booted&) = delete;
        Booted& operator=(const Booted&) = delete;
        ~Booted() {
            if (isMade_)
                std::filesystem::remove(kBooted, refused_);
        }

      private:
        std::error_code refused_;
        bool isMade_;
    };

    QString nameOnBus() const {
        return bus_.interface()->serviceOwner(QStringLiteral("org.freedesktop.systemd1")).value();
    }
    bool waitForBus() {
        return QTest::qWaitFor([this] { return hasEnded() || isOnBus(); }, 20'000) && !hasEnded();
    }
    bool hasEnded() const { return systemd_.state() == QProcess::NotRunning; }
    bool isOnBus() {
        if (!bus_.isConnected()) {
            QDBusConnection::disconnectFromBus(kConnection);
            bus_ = QDBusConnection::connectToBus(address_, kConnection);
        }
        return bus_.isConnected() &&
               bus_.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.systemd1"));
    }

    // Managers share a control group, where the one would end what the other has started, and the
    // folder that says what the machine runs. So there is one at a time, whoever tests.
    class Turn {
      public:
        Turn() : descriptor_(::open(kManager, O_RDONLY | O_CLOEXEC)) {
            while (::flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
            }
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() { ::close(descriptor_); }

      private:
        int descriptor_;
    };

    const Turn turn_;
    TemporaryFolder folder_;
    QString address_;
    QProcess systemd_;
    QDBusConnection bus_{QString()};
    bool isRunning_{false};
};

} // namespace zenlot
