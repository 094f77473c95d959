// Folders of the user's that are full, read-only, somebody else's, or on a disk that does not
// answer, while the programs run and from the start: each test stands for a line of
// docs/reliability.md.
#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"
#include "e2e/stall_watch.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

enum class Fault { hung, full, readOnly, foreign };

std::string nameOf(Fault fault) {
    return std::array{"hung", "full", "read-only", "foreign"}.at(static_cast<std::size_t>(fault));
}

// Of its own are the mounts, and what the superuser may do with files of others it may not.
void becomeApart() {
    if (::unshare(CLONE_NEWNS) != 0 ||
        ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        ::_exit(100);
    for (const int capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
        ::prctl(PR_CAPBSET_DROP, capability, 0, 0, 0);
}

// In some containers the superuser may not, either.
bool mayMount() {
    const pid_t child = ::fork();
    if (child == 0) {
        becomeApart();
        ::_exit(0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status == 0;
}

class StorageFaultsTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!mayMount())
            GTEST_SKIP() << "nobody may mount such folders here";
        const int device = openDevice();
        ::close(device);
        if (device < 0)
            GTEST_SKIP() << "there are no file systems of users";
    }
    ~StorageFaultsTest() override {
        QDBusConnection::disconnectFromBus(bus.name());
        for (const int device : devices_)
            ::close(device);
    }

    // Whoever asks for a file of a hung folder waits until this is called, and fails then.
    void renewDevices() {
        for (int& device : devices_) {
            ::close(device);
            device = openDevice();
        }
    }

    static constexpr char kFill[] = "/fill";

    // In the mounts of this process. Zero or the error.
    int bring(Fault fault, const std::string& folder, std::size_t place = 0) const {
        const char* const path = folder.c_str();
        switch (fault) {
        case Fault::hung: {
            const std::string options =
                "fd=" + std::to_string(devices_.at(place)) + ",rootmode=40000,user_id=0,group_id=0";
            return ::mount("hung", path, "fuse", 0, options.c_str()) == 0 ? 0 : errno;
        }
        case Fault::full: {
            if (::mount("full", path, "tmpfs", 0, "size=64k") != 0)
                return errno;
            const int file = ::open((folder + kFill).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
            const std::array<char, 4096> block{};
            while (::write(file, block.data(), block.size()) > 0)
                continue;
            ::close(file);
            return 0;
        }
        case Fault::readOnly:
            return ::mount(path, path, nullptr, MS_BIND, nullptr) == 0 &&
                           ::mount(nullptr, path, nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY,
                                   nullptr) == 0
                       ? 0
                       : errno;
        case Fault::foreign:
            return ::mount("foreign", path, "tmpfs", 0, "uid=65534,mode=700") == 0 ? 0 : errno;
        }
        return EINVAL;
    }

    // The same in the mounts of a program; its exit code tells.
    template <typename Work>
    static int doAt(qint64 program, Work work) {
        const std::string mounts = "/proc/" + std::to_string(program) + "/ns/mnt";
        const pid_t helper = ::fork();
        if (helper == 0) {
            const int descriptor = ::open(mounts.c_str(), O_RDONLY | O_CLOEXEC);
            ::_exit(::setns(descriptor, CLONE_NEWNS) == 0 ? work() : 100);
        }
        int status = -1;
        ::waitpid(helper, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    int bringTo(const QProcess& program, Fault fault, const std::string& folder,
                std::size_t place = 0) const {
        return doAt(program.processId(), [&] { return bring(fault, folder, place); });
    }
    int takeFrom(const QProcess& program, Fault fault, const std::string& folder) {
        if (fault == Fault::hung)
            renewDevices();
        return doAt(program.processId(),
                    [&] { return ::umount2(folder.c_str(), MNT_DETACH) == 0 ? 0 : errno; });
    }

    bool owns(const QString& name, const QProcess& program) const {
        return bus.interface()->servicePid(name) == program.processId();
    }

    PrivateDesktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"e2e storage"_s);

  private:
    static int openDevice() { return ::open("/dev/fuse", O_RDWR | O_CLOEXEC); }

    // One for each program: of two that ask for the same file, the second can't even be killed.
    std::array<int, 2> devices_{openDevice(), openDevice()};
};

// The window goes on, says what is wrong, and what was changed is written when it can be.
TEST_F(StorageFaultsTest, SettingsAreTriedAgain) {
    const std::string folder = (desktop.folder() / kSettings).parent_path();
    for (const Fault fault : {Fault::full, Fault::readOnly, Fault::foreign, Fault::hung}) {
        SCOPED_TRACE(nameOf(fault));
        desktop.writeSettings(R"({"hasCompletedOnboarding": true})");
        QProcess& zenlot =
            desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--settings"_s}, becomeApart);
        const AccessibleTree tree(desktop.sessionBus());
        ASSERT_TRUE(tree.find("frame", u"Settings"_s, AccessibleTree::State::active));
        ASSERT_TRUE(desktop.waitForLog("notification setup"));
        ASSERT_EQ(bringTo(zenlot, fault, folder), 0);
        ASSERT_TRUE(tree.pressOnce("check box", u"Show in the taskbar"_s));
        EXPECT_TRUE(tree.find("label", u"Your settings can't be saved"_s)) << "no notice";
        StallWatch watch(desktop.sessionBus(), zenlot.processId());
        ASSERT_EQ(takeFrom(zenlot, fault, folder), 0);
        EXPECT_TRUE(tree.isGone("label", u"Your settings can't be saved"_s));
        EXPECT_LE(watch.longest(), StallWatch::kBound);
        EXPECT_GT(watch.answers(), 0);
        EXPECT_NE(desktop.files().read(kSettings).find("showInDock"), std::string::npos);
        zenlot.terminate();
        EXPECT_TRUE(zenlot.waitForFinished(kPatience));
        EXPECT_EQ(zenlot.exitCode(), 0);
        std::filesystem::remove(desktop.folder() / kLog);
    }
}

// With a hung folder the programs run as far as they can, and end when they are asked.
TEST_F(StorageFaultsTest, NobodyWaitsForADiskThatDoesNotAnswer) {
    const std::string settings =
        R"({"hasCompletedOnboarding": true, "conflictMonitoringEnabled": true})";
    for (const char* place : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"}) {
        SCOPED_TRACE(place);
        const std::string folder = desktop.folder() / place;
        for (const bool fromTheStart : {false, true}) {
            SCOPED_TRACE(fromTheStart);
            desktop.writeSettings(settings);
            renewDevices();
            std::vector<QProcess*> programs;
            const auto prepare = [&] {
                becomeApart();
                if (fromTheStart && bring(Fault::hung, folder, programs.size()) != 0)
                    ::_exit(101);
            };
            const auto end = [](QProcess& program) {
                program.terminate();
                EXPECT_TRUE(program.waitForFinished(kPatience)) << program.program().toStdString();
                EXPECT_THAT(program.exitCode(), testing::AnyOf(0, SIGTERM))
                    << program.readAllStandardError().toStdString();
            };
            for (const char* program : {ZENLOT_MONITOR, ZENLOT_PROGRAM}) {
                // The monitor that the application brought may still be on its way out.
                const QString argument =
                    program == std::string_view(ZENLOT_PROGRAM) ? u"--background"_s : u"--wait"_s;
                programs.push_back(&desktop.start(QLatin1String(program), {argument}, prepare));
                // One by one, since the application brings a monitor where it finds none.
                if (fromTheStart) {
                    QTest::qWait(1000);
                    end(*programs.back());
                }
            }
            if (!fromTheStart) {
                QProcess& monitor = *programs[0];
                QProcess& zenlot = *programs[1];
                ASSERT_TRUE(QTest::qWaitFor(
                    [&] {
                        return owns(u"dev.quorvane.zenlot"_s, zenlot) &&
                               owns(u"dev.quorvane.zenlot.Monitor"_s, monitor);
                    },
                    kPatience))
                    << desktop.log() << monitor.readAllStandardError().toStdString()
                    << zenlot.readAllStandardError().toStdString();
                ASSERT_TRUE(desktop.waitForLog("notification setup"));
                StallWatch watch(desktop.sessionBus(), zenlot.processId());
                ASSERT_EQ(bringTo(monitor, Fault::hung, folder, 0), 0);
                ASSERT_EQ(bringTo(zenlot, Fault::hung, folder, 1), 0);
                QTest::qWait(3000); // polls come every two seconds
                EXPECT_LE(watch.longest(), StallWatch::kBound);
                EXPECT_GT(watch.answers(), 0);
                end(zenlot);
                end(monitor);
            }
            std::filesystem::remove(desktop.folder() / kLog);
        }
    }
}

} // namespace
} // namespace zenlot
