// The program as a whole: a real server that can't have its port, told to the rest of the session.
#include "monitoring/broadcast_names.h"
#include "monitoring/conflict_record.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "support/listener.h"
#include "support/private_bus.h"
#include "support/temporary_folder.h"

#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <gmock/gmock.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const QString kBindwatch = u"--bindwatch"_s;
constexpr int kPatienceMilliseconds = 20'000;
const std::string kContainer = "state/group.dev.quorvane.zenlot/";
const std::string kLog = "Library/Logs/zenlot-monitor.log";

// With and without process events of the kernel, and told of refused ports by the helper.
class BackgroundMonitorTest : public testing::TestWithParam<QStringList> {
  protected:
    void SetUp() override {
        environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, QString::fromStdString(home.path().string()));
        environment.insert(u"XDG_STATE_HOME"_s,
                           QString::fromStdString((home.path() / "state").string()));
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        environment.remove(u"PORT"_s);
        environment.insert(u"TOKEN"_s, u"never-to-be-written"_s);
        if (isTold()) {
            if (!startHelper())
                GTEST_SKIP() << "the kernel does not let the helper watch here: "
                             << helper.readAllStandardError().toStdString();
        }
    }

    void TearDown() override {
        for (QProcess* process : {&server, &holder, &automation, &monitor, &helper}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void start(QProcess& process, const QString& program, const QStringList& arguments) {
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(QString::fromStdString(home.path().string()));
        process.start(program, arguments);
        ASSERT_TRUE(process.waitForStarted());
    }

    static bool isTold() { return GetParam().contains(kBindwatch); }
    // One that is gone at once, on a busy machine or while the monitor looks into another.
    static bool mayMiss() { return !isTold(); }

    QString binds() const { return QString::fromStdString((home.path() / "binds").string()); }

    QStringList monitorArguments() const {
        return isTold() ? QStringList{kBindwatch, binds()}
                        : GetParam() + QStringList{kBindwatch, QString()};
    }

    bool startHelper() {
        const QString program = QStringLiteral(ZENLOT_BINDWATCH);
        if (program.isEmpty())
            return false;
        start(helper, program, {u"--socket"_s, binds()});
        return waitFor([this] {
                   return helper.state() == QProcess::NotRunning || QFile::exists(binds());
               }) &&
               helper.state() == QProcess::Running;
    }

    // The last word about it in the log.
    bool saysThatItIsTold() const {
        const std::string log = home.read(kLog);
        const std::size_t told = log.rfind(" told of refused ports");
        const std::size_t noLonger = log.rfind("no longer told of refused ports");
        return told != std::string::npos && (noLonger == std::string::npos || told > noLonger + 16);
    }

    // Starts a server of the system's Python that says on which port it is.
    void startHolder(const QString& program = u"python3"_s, const QString& wanted = u"0"_s) {
        start(holder, program,
              {u"-u"_s, u"-m"_s, u"http.server"_s, u"-b"_s, u"127.0.0.1"_s, wanted});
        ASSERT_TRUE(waitFor([this] { return holder.canReadLine(); }));
        port = QString::fromUtf8(holder.readLine()).section(u' ', 5, 5).toInt();
    }

    template <typename Condition>
    static bool waitFor(Condition condition) {
        return QTest::qWaitFor(condition, kPatienceMilliseconds);
    }

    // Those of the test: others may start servers on the machine meanwhile.
    std::vector<ConflictRecord> conflicts() const {
        auto records = decodeConflictRecords(home.read(kContainer + "conflicts.json"))
                           .value_or(std::vector<ConflictRecord>());
        std::erase_if(records, [this](const ConflictRecord& each) { return each.port != port; });
        return records;
    }

    // Starts a server on the port that is held, and waits until that was noticed.
    bool isNoticed() {
        for (int starts = mayMiss() ? 20 : 1; starts > 0; --starts) {
            start(server, u"/usr/bin/python3"_s,
                  {u"-m"_s, u"http.server"_s, u"-b"_s, u"127.0.0.1"_s, QString::number(port)});
            if (!server.waitForFinished(kPatienceMilliseconds))
                return false;
            if (QTest::qWaitFor([this] { return !conflicts().empty(); },
                                mayMiss() ? 3000 : kPatienceMilliseconds))
                return true;
        }
        return false;
    }

    // Starts the monitor beside a server, and waits until both are there.
    void startMonitor() {
        start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
        ASSERT_TRUE(waitFor([this] { return isPublished(); }));
    }

    std::string published() const { return home.read(kContainer + "ports.json"); }
    bool isPublished() const {
        return published().find("{\"port\":" + std::to_string(port) + ",") != std::string::npos;
    }

    static void end(QProcess& process) {
        process.kill();
        ASSERT_TRUE(process.waitForFinished(kPatienceMilliseconds));
    }

    // What the desktop's search and the terminal say of the port.
    std::vector<std::string> answers() {
        if (automation.state() == QProcess::NotRunning)
            start(automation, QStringLiteral(ZENLOT_AUTOMATION), {});
        const QString name = u"dev.quorvane.zenlot.Automation"_s;
        QDBusMessage question = QDBusMessage::createMethodCall(
            name, u"/dev/quorvane/zenlot/Automation"_s, name, u"CheckPort"_s);
        question.setArguments({QVariant(qlonglong{port})});
        QDBusMessage answer;
        waitFor([&] {
            answer = connection.call(question);
            return answer.type() == QDBusMessage::ReplyMessage;
        });
        QProcess terminal;
        start(terminal, QStringLiteral(ZENLOTCTL), {u"check"_s, QString::number(port)});
        terminal.waitForFinished();
        return {answer.arguments().value(0).toString().toStdString(),
                QString::fromUtf8(terminal.readAllStandardOutput()).trimmed().toStdString()};
    }

    testing::Matcher<std::vector<std::string>> sayFree() const {
        return testing::Each("Port " + std::to_string(port) + " is free — nothing is using it.");
    }

    static constexpr uid_t kUser = 65533;
    static constexpr uid_t kOtherUser = 65534;

    static void runAs(QProcess& process, uid_t user) {
        process.setChildProcessModifier([user] {
            if (::setuid(user) != 0)
                ::_exit(1);
        });
    }

    // The program where every user may start it.
    QString monitorForEverybody() {
        const std::filesystem::path program = home.path() / "monitor";
        std::filesystem::copy(ZENLOT_MONITOR, program);
        std::filesystem::permissions(home.path(), std::filesystem::perms::all);
        return QString::fromStdString(program.string());
    }

    TemporaryFolder home;
    QProcessEnvironment environment;
    PrivateBus bus;
    QProcess helper;
    QProcess monitor;
    QProcess automation;
    QProcess holder;
    QProcess server;
    QDBusConnection connection = bus.connect(u"observer"_s);
    int port = 0;
};

TEST_P(BackgroundMonitorTest, NamesWhoHoldsThePortThatAServerWanted) {
    SessionBusBroadcastCenter broadcasts(connection);
    QObject context;
    std::vector<QString> heard;
    ASSERT_NO_FATAL_FAILURE(startHolder());
    for (const QString& name : {QString(kPortsUpdatedBroadcast), conflictBroadcast(port)})
        broadcasts.observe(name, BroadcastCenter::Meaning::readAnew, &context,
                           [&](const QString& said) { heard.push_back(said); });

    start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
    ASSERT_TRUE(waitFor([&] { return home.read(kLog).find("started") != std::string::npos; }));
    const std::string portEntry = "{\"port\":" + std::to_string(port) + ",";
    ASSERT_TRUE(waitFor(
        [&] { return home.read(kContainer + "ports.json").find(portEntry) != std::string::npos; }));

    QProcess second;
    start(second, QStringLiteral(ZENLOT_MONITOR), {});
    ASSERT_TRUE(second.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_THAT(second.readAllStandardError().toStdString(), HasSubstr("another one is running"));
    start(second, QStringLiteral(ZENLOT_MONITOR), QStringList(u"--wait"_s) + monitorArguments());

    // A crash for another reason while the port is held, then the real thing.
    const QString number = QString::number(port);
    start(server, u"python3"_s, {u"-m"_s, u"http.server"_s, number, u"--no-such-option"_s});
    ASSERT_TRUE(server.waitForFinished(kPatienceMilliseconds));
    ASSERT_TRUE(isNoticed());
    EXPECT_EQ(conflicts().size(), 1U);
    EXPECT_EQ(conflicts()[0].pid, holder.processId());
    EXPECT_THAT(conflicts()[0].processName, HasSubstr("python3"));
    EXPECT_TRUE(waitFor([&] { return testing::Value(heard, Contains(conflictBroadcast(port))); }));
    EXPECT_THAT(heard, Contains(QString(kPortsUpdatedBroadcast)));
    EXPECT_THAT(home.read(kLog),
                HasSubstr(" [zenlot-daemon] broadcasting port " + number.toStdString() + ", "));

    for (const auto& file : std::filesystem::recursive_directory_iterator(home.path())) {
        if (file.is_regular_file()) {
            const std::string content =
                home.read(std::filesystem::relative(file.path(), home.path()).string());
            EXPECT_THAT(content, Not(HasSubstr("never-to-be-written"))) << file.path();
            EXPECT_THAT(content, Not(HasSubstr("http.server"))) << file.path();
        }
    }

    monitor.terminate();
    ASSERT_TRUE(monitor.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(monitor.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(monitor.exitCode(), 0);
    EXPECT_THAT(home.read(kLog), HasSubstr("stopped\n"));
    EXPECT_EQ(monitor.readAllStandardError().toStdString(), "");

    // The one that waited takes over, and can be ended like any other.
    ASSERT_TRUE(waitFor([this] { return isPublished(); }));
    second.terminate();
    ASSERT_TRUE(second.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(published(), "[]");
}

// Regular polls come every two seconds at the most, so that six servers in a row that are gone from
// the list within one would be a wonder without word of their ends.
TEST_P(BackgroundMonitorTest, KilledServersAreGoneFromEveryAnswerAtOnce) {
    for (int round = 0; round < 6; ++round) {
        ASSERT_NO_FATAL_FAILURE(startHolder());
        if (round == 0) {
            ASSERT_NO_FATAL_FAILURE(startMonitor());
        }
        ASSERT_TRUE(waitFor([this] { return isPublished(); }));
        ASSERT_NO_FATAL_FAILURE(end(holder));
        EXPECT_TRUE(QTest::qWaitFor([this] { return !isPublished(); }, 1000)) << round;
        EXPECT_THAT(answers(), sayFree());
    }
}

// A list is withdrawn by a monitor that ends, and nobody's when it was killed.
TEST_P(BackgroundMonitorTest, NothingIsBelievedOfAMonitorThatIsGone) {
    SessionBusBroadcastCenter broadcasts(connection);
    QObject context;
    std::string listAtLastWord;
    broadcasts.observe(kPortsUpdatedBroadcast, BroadcastCenter::Meaning::readAnew, &context,
                       [&](const QString&) { listAtLastWord = published(); });
    ASSERT_NO_FATAL_FAILURE(startHolder());
    ASSERT_NO_FATAL_FAILURE(startMonitor());
    EXPECT_THAT(answers(), testing::Each(HasSubstr("is used by: ")));
    monitor.terminate();
    ASSERT_TRUE(monitor.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(published(), "[]");
    EXPECT_TRUE(waitFor([&] { return listAtLastWord == "[]"; }));

    ASSERT_NO_FATAL_FAILURE(startMonitor());
    ASSERT_NO_FATAL_FAILURE(end(monitor));
    ASSERT_NO_FATAL_FAILURE(end(holder));
    EXPECT_TRUE(isPublished());
    EXPECT_THAT(answers(), sayFree());
}

TEST_P(BackgroundMonitorTest, ARemovedContainerIsMadeAnewAndStaysOneMonitors) {
    ASSERT_NO_FATAL_FAILURE(startHolder());
    ASSERT_NO_FATAL_FAILURE(startMonitor());
    // At once: while its files go one by one, the monitor begins to put them back.
    std::filesystem::rename(home.path() / "state/group.dev.quorvane.zenlot",
                            home.path() / "state/removed");
    ASSERT_TRUE(waitFor([this] { return isPublished(); }));
    QProcess second;
    start(second, QStringLiteral(ZENLOT_MONITOR), {});
    ASSERT_TRUE(second.waitForFinished(kPatienceMilliseconds));
    EXPECT_EQ(second.exitCode(), 1);
    ASSERT_TRUE(isNoticed());
    EXPECT_EQ(conflicts().size(), 1U);
    ASSERT_NO_FATAL_FAILURE(end(holder));
    EXPECT_TRUE(waitFor([this] { return !isPublished(); }));
}

// It opens the sockets of the user's services for them, and the session ends with it.
TEST_P(BackgroundMonitorTest, NobodyIsOfferedToEndTheServiceManager) {
    const QString manager = QString::fromStdString(home.path().string()) + u"/systemd"_s;
    ASSERT_TRUE(QFile::copy(QFileInfo(u"/usr/bin/python3"_s).canonicalFilePath(), manager));
    environment.insert(u"PYTHONHOME"_s, u"/usr"_s);
    ASSERT_NO_FATAL_FAILURE(startHolder(manager));
    environment.remove(u"PYTHONHOME"_s);
    start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
    ASSERT_TRUE(waitFor([&] { return home.read(kLog).find("started") != std::string::npos; }));
    ASSERT_TRUE(isNoticed());
    EXPECT_EQ(conflicts()[0].pid, 0);
    EXPECT_EQ(conflicts()[0].processName, "systemd");
}

// More happens at once than the kernel keeps for the monitor, and a start with it.
TEST_P(BackgroundMonitorTest, AStartThatNobodyToldOfIsFound) {
    ASSERT_NO_FATAL_FAILURE(startHolder());
    ASSERT_NO_FATAL_FAILURE(startMonitor());
    home.write("server.py", "import pathlib, socket, time\n"
                            "while not pathlib.Path('go').exists(): time.sleep(0.01)\n"
                            "socket.create_server(('127.0.0.1', " +
                                std::to_string(port) + "))\n");
    ASSERT_EQ(::kill(static_cast<pid_t>(monitor.processId()), SIGSTOP), 0);
    constexpr int kMoreThanIsKept = 2000;
    for (int count = 0; count < kMoreThanIsKept; ++count) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(1);
        ::waitpid(child, nullptr, 0);
    }
    start(server, u"/usr/bin/python3"_s, {u"server.py"_s});
    ASSERT_EQ(::kill(static_cast<pid_t>(monitor.processId()), SIGCONT), 0);
    // When what comes later is known, so is what came before.
    const Listener later;
    ASSERT_TRUE(waitFor([&] {
        return published().find("{\"port\":" + std::to_string(later.port()) + ",") !=
               std::string::npos;
    }));
    home.write("go", "");
    ASSERT_TRUE(server.waitForFinished(kPatienceMilliseconds));
    EXPECT_TRUE(waitFor([this] { return !conflicts().empty(); }));
}

// Who may not be looked into is named all the same, by what everybody may know.
TEST_P(BackgroundMonitorTest, AHolderOfAnotherUserIsNamed) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can start something as two other users";
    const QString program = monitorForEverybody();
    runAs(holder, kOtherUser);
    runAs(monitor, kUser);
    runAs(server, kUser);
    // Without control groups its arguments tell.
    const QString free = QString::number(Listener().port());
    ASSERT_NO_FATAL_FAILURE(startHolder(u"/usr/bin/python3"_s, free));
    start(monitor, program, monitorArguments());
    ASSERT_TRUE(waitFor([&] { return home.read(kLog).find("started") != std::string::npos; }));
    ASSERT_TRUE(isNoticed());
    EXPECT_EQ(conflicts()[0].pid, holder.processId());
    EXPECT_THAT(conflicts()[0].processName, HasSubstr("python3"));
}

class HelpedMonitorTest : public BackgroundMonitorTest {};

// The helper may be removed, and come back, at any moment: each refusal is told once all the same.
TEST_P(HelpedMonitorTest, TheHelperMayComeAndGo) {
    ASSERT_NO_FATAL_FAILURE(startHolder());
    ASSERT_NO_FATAL_FAILURE(startMonitor());
    const std::string broadcast = "broadcasting port " + std::to_string(port) + ", ";
    const auto told = [&] {
        const std::string log = home.read(kLog);
        std::size_t count = 0;
        for (std::size_t at = log.find(broadcast); at != std::string::npos;
             at = log.find(broadcast, at + 1))
            ++count;
        return count;
    };
    QStringList words{u"-c"_s, u"import socket,time; s=socket.socket(); "
                               "s.bind(('127.0.0.1',%1))"_s.arg(port)};
    for (std::size_t round = 1; round <= 4; ++round) {
        const bool isThere = round % 2 == 1;
        if (isThere && helper.state() == QProcess::NotRunning) {
            ASSERT_TRUE(startHelper());
        } else if (!isThere) {
            ASSERT_NO_FATAL_FAILURE(end(helper));
        }
        ASSERT_TRUE(waitFor([&] { return saysThatItIsTold() == isThere; })) << round;
        // A literal that nothing else in the command line disturbs; another program each time.
        for (int starts = isThere ? 1 : 20; starts > 0 && told() < round; --starts) {
            words.last() += u'#';
            start(server, u"python3"_s, words);
            ASSERT_TRUE(server.waitForFinished(kPatienceMilliseconds));
            [[maybe_unused]] const bool ignored = QTest::qWaitFor(
                [&] { return told() >= round; }, isThere ? kPatienceMilliseconds : 3000);
        }
        ASSERT_EQ(told(), round);
        // What inference would make of it comes within a second and a half.
        QTest::qWait(2000);
        EXPECT_EQ(told(), round);
        QTest::qWait(2000); // until it is no restart in a loop
    }
}

TEST_P(HelpedMonitorTest, ANetworkOfItsOwnIsLookedIntoAsWell) {
    start(
        holder, u"unshare"_s,
        {u"-n"_s, u"python3"_s, u"-u"_s, u"-m"_s, u"http.server"_s, u"-b"_s, u"0.0.0.0"_s, u"0"_s});
    ASSERT_TRUE(waitFor([this] { return holder.canReadLine(); }))
        << holder.readAllStandardError().toStdString();
    port = QString::fromUtf8(holder.readLine()).section(u' ', 5, 5).toInt();
    start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
    ASSERT_TRUE(waitFor([&] { return saysThatItIsTold(); }));
    start(server, u"nsenter"_s,
          {u"-t"_s, QString::number(holder.processId()), u"-n"_s, u"python3"_s, u"-m"_s,
           u"http.server"_s, u"-b"_s, u"0.0.0.0"_s, QString::number(port)});
    ASSERT_TRUE(waitFor([&] { return !conflicts().empty(); }));
    EXPECT_EQ(conflicts()[0].pid, holder.processId());
    EXPECT_THAT(conflicts()[0].processName, HasSubstr("python3"));
}

TEST_P(HelpedMonitorTest, APortThatIsOnlyBoundHasAHolderToo) {
    start(holder, u"python3"_s,
          {u"-uc"_s, u"import socket, sys; s = socket.socket(); s.bind(('127.0.0.1', 0)); "
                     "print(s.getsockname()[1]); sys.stdin.read()"_s});
    ASSERT_TRUE(waitFor([this] { return holder.canReadLine(); }));
    port = QString::fromUtf8(holder.readLine()).toInt();
    QProcess doctor;
    start(doctor, QStringLiteral(ZENLOTCTL), {u"why"_s, QString::number(port)});
    ASSERT_TRUE(doctor.waitForFinished(kPatienceMilliseconds));
    if (!doctor.readAllStandardOutput().contains(QByteArray::number(holder.processId())))
        GTEST_SKIP() << "this kernel does not tell of sockets that are only bound";
    start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
    ASSERT_TRUE(waitFor([&] { return saysThatItIsTold(); }));
    ASSERT_TRUE(isNoticed());
    EXPECT_EQ(conflicts()[0].pid, holder.processId());
}

// As servers do that bind all families before they listen; which is first is chance with some.
TEST_P(HelpedMonitorTest, WhatAServerKeepsForIpv6IsNotInItsOwnWay) {
    start(holder, u"python3"_s, {u"-um"_s, u"http.server"_s, u"-b"_s, u"0.0.0.0"_s, u"0"_s});
    ASSERT_TRUE(waitFor([this] { return holder.canReadLine(); }));
    port = QString::fromUtf8(holder.readLine()).section(u' ', 5, 5).toInt();
    start(monitor, QStringLiteral(ZENLOT_MONITOR), monitorArguments());
    ASSERT_TRUE(waitFor([&] { return saysThatItIsTold(); }));
    start(server, u"python3"_s,
          {u"-c"_s, u"import socket as s, sys\n"
                    "six = s.socket(s.AF_INET6)\n"
                    "six.setsockopt(s.IPPROTO_IPV6, s.IPV6_V6ONLY, 1)\n"
                    "six.bind(('::', %1))\n"
                    "try: s.socket().bind(('0.0.0.0', %1))\n"
                    "except OSError: sys.stdin.read()"_s.arg(port)});
    ASSERT_TRUE(waitFor([&] { return !conflicts().empty(); }));
    EXPECT_EQ(conflicts()[0].pid, holder.processId());
}

INSTANTIATE_TEST_SUITE_P(Noticing, BackgroundMonitorTest,
                         testing::Values(QStringList(), QStringList(u"--poll"_s),
                                         QStringList(kBindwatch)),
                         [](const auto& mode) {
                             return mode.param.isEmpty()               ? "AsTheKernelTells"
                                    : mode.param.contains(u"--poll"_s) ? "ByPolling"
                                                                       : "WithTheHelper";
                         });
INSTANTIATE_TEST_SUITE_P(Noticing, HelpedMonitorTest, testing::Values(QStringList(kBindwatch)));

} // namespace
} // namespace zenlot
