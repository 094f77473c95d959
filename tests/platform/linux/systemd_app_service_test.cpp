#include "platform/linux/systemd_app_service.h"
#include "support/private_bus.h"
#include "support/private_user_manager.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using enum AppServiceStatus;

const QString kUnit = u"dev.quorvane.zenlot.monitor.service"_s;
const std::string kSleep = "[Service]\nType=exec\nExecStart=/bin/sleep 1000\n";
const std::string kInstall = "[Install]\nWantedBy=default.target\n";
const std::string kBlocked = "SMAppServiceErrorDomain 1";

std::string textOf(const std::optional<AppServiceError>& error) {
    return error ? error->domain.toStdString() + ' ' + std::to_string(error->code) : "";
}

// Against a real systemd.
class SystemdAppServiceTest : public testing::Test {
  protected:
    SystemdAppServiceTest() { writeUnit(kSleep + kInstall); }
    void SetUp() override {
        if (!manager.isRunning())
            GTEST_SKIP() << "no systemd can be run here: " << manager.output();
    }

    void writeUnit(const std::string& text) const { manager.writeUnit(kUnit.toStdString(), text); }
    std::string systemctl(const QString& verb) const {
        return manager.run(u"systemctl --user "_s + verb + u' ' + kUnit);
    }
    bool waitUntilStopped() const {
        return QTest::qWaitFor([this] { return systemctl(u"show -P MainPID"_s) == "0"; }, 20'000);
    }

    PrivateUserManager manager;
    SystemdAppService service{manager.bus(), kUnit, {}, {20s, 20s}}; // a busy machine is no fault
};

TEST_F(SystemdAppServiceTest, RegistersAndUnregisters) {
    EXPECT_EQ(service.unregisterService(), std::nullopt);
    EXPECT_EQ(service.status(), notRegistered);
    for (const std::string description : {"before", "after"}) {
        writeUnit(std::string("[Unit]\nDescription=")
                      .append(description)
                      .append("\n")
                      .append(kSleep)
                      .append(kInstall));
        EXPECT_EQ(service.registerService(), std::nullopt);
        EXPECT_EQ(service.status(), enabled);
        EXPECT_EQ(systemctl(u"is-active"_s), "active");
        EXPECT_EQ(systemctl(u"show -P Description"_s), description);
    }
    systemctl(u"--runtime enable"_s);
    EXPECT_EQ(service.unregisterService(), std::nullopt);
    EXPECT_EQ(service.status(), notRegistered);
    EXPECT_TRUE(waitUntilStopped());
}

TEST_F(SystemdAppServiceTest, LeavesWhatIsMaskedToTheUser) {
    for (const QString& mask : {u"mask"_s, u"--runtime mask"_s}) {
        EXPECT_EQ(service.registerService(), std::nullopt);
        systemctl(mask);
        EXPECT_EQ(service.status(), requiresApproval);
        EXPECT_EQ(textOf(service.registerService()), kBlocked);
        EXPECT_EQ(textOf(service.unregisterService()), kBlocked);
        EXPECT_TRUE(waitUntilStopped());
        manager.run(service.unmaskCommand());
        EXPECT_EQ(service.status(), enabled) << service.unmaskCommand().toStdString();
    }
    EXPECT_EQ(service.unmaskCommand(), u"systemctl --user unmask "_s + kUnit);
}

TEST_F(SystemdAppServiceTest, TellsWhyAUnitCannotBeRegistered) {
    const std::pair<std::string, std::string> cases[] = {
        {"[Service]\nType=exec\nRestart=always\nExecStart=/nonexistent\n" + kInstall,
         "dev.quorvane.zenlot.systemd 1"},
        {kSleep, "dev.quorvane.zenlot.systemd 2"},
        {"[Service]\n" + kInstall, "org.freedesktop.systemd1.BadUnitSetting 0"}};
    for (const auto& [text, error] : cases) {
        writeUnit(text);
        EXPECT_EQ(textOf(service.registerService()), error);
        EXPECT_EQ(service.status(), notRegistered);
        EXPECT_NE(systemctl(u"is-active"_s), "activating");
    }
    SystemdAppService absent(manager.bus(), u"absent.service"_s);
    EXPECT_EQ(absent.status(), notRegistered);
    EXPECT_EQ(textOf(absent.registerService()), "org.freedesktop.systemd1.NoSuchUnit 0");
    EXPECT_EQ(absent.unregisterService(), std::nullopt);
}

// As where the program runs from the tree in which it was built. A tree may have moved since.
TEST_F(SystemdAppServiceTest, LinksAUnitFromWhereItLies) {
    const QString unit = u"tree.service"_s;
    const TemporaryFolder tree;
    for (const std::string folder : {"a b", "c"}) {
        tree.write(folder + "/tree.service", kSleep + kInstall);
        SystemdAppService linked(manager.bus(), unit,
                                 QString::fromStdString(tree.path() / folder / "tree.service"),
                                 {20s, 20s});
        EXPECT_TRUE(linked.hasManager());
        for (int turn = 0; turn < 2; ++turn) {
            EXPECT_EQ(textOf(linked.registerService()), "");
            EXPECT_EQ(linked.status(), enabled);
        }
        if (folder == "c") {
            EXPECT_EQ(linked.unregisterService(), std::nullopt);
            EXPECT_EQ(linked.status(), notRegistered);
            EXPECT_EQ(manager.run(u"systemctl --user cat tree.service"_s), "");
        }
        std::filesystem::remove_all(tree.path() / folder);
    }
}

// systemd starts a unit again and again, and then no more.
TEST_F(SystemdAppServiceTest, TellsThatAUnitWasGivenUpAndTriesItOnceMore) {
    writeUnit("[Unit]\nStartLimitIntervalSec=1h\nStartLimitBurst=2\n" + kSleep +
              "Restart=on-failure\nRestartSec=0\n" + kInstall);
    EXPECT_EQ(service.failure(), std::nullopt) << "not even loaded";
    EXPECT_EQ(service.registerService(), std::nullopt);
    EXPECT_EQ(service.failure(), std::nullopt);
    // systemd hears of an end a little later, so the next one is that of another process.
    std::string process = "0";
    for (int end = 0; end < 2; ++end) {
        const std::string before = std::exchange(process, "0");
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                process = systemctl(u"show -P MainPID"_s);
                return process != "0" && process != before;
            },
            20'000));
        ::kill(std::stoi(process), SIGKILL);
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return service.failure().has_value(); }, 20'000));
    EXPECT_EQ(textOf(service.failure()), "dev.quorvane.zenlot.systemd 4");
    EXPECT_EQ(service.status(), enabled);
    EXPECT_EQ(service.registerService(), std::nullopt);
    EXPECT_EQ(service.failure(), std::nullopt);
}

TEST_F(SystemdAppServiceTest, WaitsOnlySoLong) {
    ::kill(manager.processId(), SIGSTOP);
    QElapsedTimer clock;
    clock.start();
    SystemdAppService impatient(manager.bus(), kUnit, {}, {100ms, 100ms});
    EXPECT_EQ(impatient.status(), notRegistered);
    EXPECT_EQ(textOf(impatient.registerService()), "org.freedesktop.DBus.Error.NoReply 0");
    EXPECT_LT(clock.elapsed(), 20'000) << "the bus itself would give up after 25 s each";
    ::kill(manager.processId(), SIGCONT);
    EXPECT_EQ(service.status(), notRegistered) << "a change came about later";

    writeUnit("[Service]\nType=notify\nExecStart=/bin/sleep 1000\n" + kInstall);
    EXPECT_EQ(SystemdAppService(manager.bus(), kUnit, {}, {5s, 2s}).registerService(), std::nullopt)
        << "what takes its time has not failed";
}

TEST(SystemdAppServiceWithoutSystemdTest, FailsAtOnce) {
    PrivateBus bus;
    const std::pair<QDBusConnection, std::string> cases[] = {
        {bus.connect(u"nobody"_s), "org.freedesktop.DBus.Error.NameHasNoOwner 0"},
        {QDBusConnection(u"none"_s), "org.freedesktop.DBus.Error.Disconnected 0"}};
    for (const auto& [connection, error] : cases) {
        SystemdAppService service(connection, kUnit);
        EXPECT_FALSE(service.hasManager());
        EXPECT_EQ(service.status(), notRegistered);
        EXPECT_EQ(textOf(service.registerService()), error);
        EXPECT_EQ(textOf(service.unregisterService()), error);
    }
}

} // namespace
} // namespace zenlot
