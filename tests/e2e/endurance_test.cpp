// Much of everything, for minutes: not among the suites that each change is tried with, but run by
//
//     ctest --preset ci -C long -R endurance
#include "e2e/private_desktop.h"
#include "e2e/stall_watch.h"
#include "e2e/stand_in_monitor.h"
#include "support/child_process.h"
#include "support/listener.h"

#include <QDBusConnectionInterface>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <tuple>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

constexpr char kPorts[] = "XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json";
constexpr char kMonitors[] = R"({"conflictMonitoringEnabled": true, "hasCompletedOnboarding": true,
                                 "portMonitoringEnabled": true})";

// Names of files, and so of processes, that mean something to a kernel's table, a terminal, a page,
// a document, a reader of lines; and one that fills its place to the brim.
constexpr std::array<const char*, 7> kHostileNames{
    "a) S 1 1 (b",    "\n\x1B[31mred", "%s%n<b>&amp;",   "\xFF\xFE\x80\x80",
    "\"},{\"pid\":1", "\u202Egpj.exe", "fifteen_letters"};

class EnduranceTest : public testing::Test {
  protected:
    ~EnduranceTest() override { QDBusConnection::disconnectFromBus(bus.name()); }

    // Both programs, when they have done what a start does.
    void start() {
        desktop.writeSettings(kMonitors);
        monitor = &desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
        ASSERT_TRUE(desktop.waitForLog("background monitor started"));
        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
        ASSERT_TRUE(desktop.waitForLog("port activity monitor started"));
        watch.emplace(desktop.sessionBus(), zenlot->processId());
    }

    // Of the programs that the test has started in its folder, or of this one.
    std::ptrdiff_t publishedPorts(const std::string& folder) const {
        const json ports = json::parse(desktop.files().read(kPorts), nullptr, false);
        return std::ranges::count_if(ports, [&folder](const json& port) {
            return port.value("executablePath", std::string()).starts_with(folder);
        });
    }

    void expectAllIsWell() {
        EXPECT_GT(watch->answers(), 0);
        EXPECT_LE(watch->longest(), StallWatch::kBound);
        for (QProcess* program : {zenlot, monitor}) {
            EXPECT_EQ(program->state(), QProcess::Running);
            program->terminate();
            EXPECT_TRUE(program->waitForFinished(kPatience));
            EXPECT_EQ(program->exitCode(), 0);
        }
    }

    PrivateDesktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"e2e endurance"_s);
    QProcess* monitor = nullptr;
    QProcess* zenlot = nullptr;
    std::optional<StallWatch> watch;
};

TEST_F(EnduranceTest, AThousandBroadcastsASecond) {
    ASSERT_NO_FATAL_FAILURE(start());
    StandInMonitor stranger(desktop);
    for (int batch = 0; batch < 100; ++batch) {
        for (int each = 0; each < 25; ++each) {
            for (const char* name : {"conflictsUpdated", "portsUpdated", "conflict.3000", "other"})
                stranger.broadcast((std::string("dev.quorvane.zenlot.") + name).c_str());
        }
        QTest::qWait(100);
    }
    expectAllIsWell();
}

TEST_F(EnduranceTest, TenThousandListenersAtOnce) {
    ASSERT_NO_FATAL_FAILURE(start());
    const ChildProcess holder([] { return listenOften(10'000); });
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return publishedPorts(std::filesystem::read_symlink("/proc/self/exe")) == 10'000; },
        kPatience));
    ASSERT_TRUE(desktop.waitForLog("count=99")) << "they are summed up"; // nine thousand and more
    expectAllIsWell();
}

// Programs of a desktop, its files, and names on its bus.
std::set<std::string> whatIsThere(const PrivateDesktop& desktop, const QDBusConnection& bus) {
    const std::string folder = desktop.folder();
    std::set<std::string> all;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
        // What others on the machine are refused meanwhile is told, too.
        if (!file.path().filename().string().starts_with("conflict"))
            all.insert(file.path());
    }
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::error_code gone;
        std::string environment;
        std::getline(std::ifstream(process.path() / "environ"), environment);
        if (environment.find(folder) != std::string::npos)
            all.insert(process.path().string() + ' ' +
                       std::filesystem::read_symlink(process.path() / "exe", gone).string());
    }
    for (const QString& name : bus.interface()->registeredServiceNames().value()) {
        if (!name.startsWith(u':'))
            all.insert(name.toStdString());
    }
    return all;
}

// Memory that processes share by number outlives them.
bool hasLeftMemory(qint64 process) {
    std::ifstream segments("/proc/sysvipc/shm");
    std::string line;
    std::getline(segments, line);
    for (qint64 key = 0, id = 0, mode = 0, size = 0, creator = 0;
         std::getline(segments, line) &&
         std::istringstream(line) >> key >> id >> mode >> size >> creator;) {
        if (creator == process)
            return true;
    }
    return false;
}

TEST_F(EnduranceTest, TwoHundredStartsAndQuitsLeaveNothing) {
    const std::tuple<const char*, const char*, const char*> programs[] = {
        // That of the program before may be at its end.
        {ZENLOT_MONITOR, "--wait", "dev.quorvane.zenlot.Monitor"},
        {ZENLOT_PROGRAM, "--background", "dev.quorvane.zenlot"},
        {ZENLOT_PROGRAM, "--settings", "dev.quorvane.zenlot"}};
    std::set<std::string> kept;
    std::minstd_rand random; // the same in every run
    for (int round = 0; round < 200; ++round) {
        // The first of each leaves what is kept: settings, caches, services of the desktop.
        const bool isFirst = round < 3;
        const auto& [program, argument, name] = programs[round % 3];
        desktop.writeSettings(kMonitors);
        QProcess& running = desktop.start(QLatin1String(program), {QLatin1String(argument)});
        const auto isReady = [&, wanted = QLatin1String(name)] {
            return bus.interface()->servicePid(wanted) == running.processId();
        };
        if (isFirst || round % 2 == 0) {
            ASSERT_TRUE(QTest::qWaitFor(isReady, kPatience)) << round;
        }
        QTest::qWait(isFirst ? 5000 : static_cast<int>(random() % 500));
        const qint64 process = running.processId();
        running.terminate();
        ASSERT_TRUE(running.state() == QProcess::NotRunning || running.waitForFinished(kPatience));
        EXPECT_TRUE(running.exitCode() == 0 || running.exitCode() == SIGTERM)
            << round << ": " << running.exitCode();
        EXPECT_FALSE(hasLeftMemory(process)) << round;
        if (round == 2)
            kept = whatIsThere(desktop, bus);
    }
    std::vector<std::string> left;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            left.clear();
            std::ranges::set_difference(whatIsThere(desktop, bus), kept, std::back_inserter(left));
            return left.empty();
        },
        kPatience))
        << testing::PrintToString(left);
}

TEST_F(EnduranceTest, ThousandsOfProcessesWithHostileNames) {
    std::vector<std::string> programs;
    for (const char* name : kHostileNames) {
        programs.push_back(desktop.folder() / name);
        std::filesystem::copy("/bin/sleep", programs.back());
    }
    ASSERT_NO_FATAL_FAILURE(start());
    // A unit of systemd may have 4,915 tasks where nobody says otherwise, and the test is in one.
    // The watch would wait while its own process is copied, so another makes them, and all end with
    // it.
    constexpr int kProcesses = 3'000;
    const std::string words(1'000, '\n');
    const std::string manyWords(100'000, '\n');
    ChildProcess crowd([&] {
        for (int made = 0; made < kProcesses; ++made) {
            const pid_t process = ::fork();
            if (process < 0)
                return false;
            if (process > 0)
                continue;
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            const bool listens = made % 10 == 0;
            if (!listens || listenOften(1))
                ::execl(programs[static_cast<std::size_t>(made) % programs.size()].c_str(),
                        (listens ? manyWords : words).c_str(), "infinity", nullptr);
            ::_exit(1);
        }
        return true;
    });
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return !crowd.isRunning() || publishedPorts(desktop.folder()) == kProcesses / 10; },
        kPatience));
    if (!crowd.isRunning())
        GTEST_SKIP() << "so many processes may not run here";
    crowd.end();
    EXPECT_TRUE(QTest::qWaitFor([&] { return publishedPorts(desktop.folder()) == 0; }, kPatience));
    expectAllIsWell();
}

} // namespace
} // namespace zenlot
