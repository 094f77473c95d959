#include "inventory_fixture.h"
#include "support/model_operations.h"
#include "support/window_driver.h"

#include <QSignalSpy>

#include <memory>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class ContentViewModelTest : public testing::Test {
  protected:
    ContentViewModelTest() {
        fixture->tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
        fixture->tables.addListener(9000, 77, currentUserId() + 1, "/bin/other");
    }

    bool waitForCheck() {
        return waitFor([this] { return !model.isChecking(); });
    }

    bool check(const QString& port) {
        model.setPortInput(port);
        model.performCheck();
        return waitForCheck();
    }

    std::unique_ptr<MainWindowFixture> fixture = std::make_unique<MainWindowFixture>();
    ContentViewModel& model = fixture->model;
};

TEST_F(ContentViewModelTest, TypingChecksOnceAfterAPause) {
    EXPECT_EQ(model.statusText(), u"Enter a port number"_s);
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    for (const QString& text : {u"8"_s, u"80"_s, u"808"_s, u"8080"_s})
        model.setPortInput(text);
    EXPECT_FALSE(model.isChecking());
    ASSERT_TRUE(waitFor([&] { return !focus.empty(); }));
    EXPECT_EQ(model.resultsHeader(), u"1 process on port 8080"_s);
    EXPECT_EQ(model.sidebarSelection(), 8080);
    EXPECT_EQ(model.selectedRow(), 0);
    EXPECT_EQ(fixture->tables.lookups(8080), 1);
    EXPECT_EQ(fixture->tables.lookups(808), 0);
    EXPECT_TRUE(model.processes()
                    ->index(0)
                    .data(ProcessListModel::accessibleNameRole)
                    .toString()
                    .startsWith(u"Sample TCP4 LISTEN PID 42 *:8080 "_s));

    model.setPortInput({});
    EXPECT_EQ(model.statusText(), u"Enter a port number"_s);
    EXPECT_TRUE(model.processes()->isEmpty());
    EXPECT_EQ(model.sidebarSelection(), ContentViewModel::kNoSelection);
}

// The rows are there first; what is known of their servers comes later.
TEST_F(ContentViewModelTest, RowsTellWhichServerItIs) {
    ProcessGlimpse& server = fixture->originSources.addServer(
        42, {"node", "/srv/node_modules/.bin/vite"}, 8080, "0.0.0.0");
    server.workingDirectory = "/srv/shop";
    server.isDirectoryDeleted = true;
    model.appear();
    ASSERT_TRUE(check(u"8080"_s));
    const SidebarModel& sidebar = *model.sidebar();
    const auto noteOf = [](const QModelIndex& row, int role) { return row.data(role).toString(); };
    ASSERT_TRUE(waitFor([&] {
        const int row = sidebar.rowOfPort(8080);
        return row >= 0 && noteOf(sidebar.index(row), SidebarModel::noteTextRole) != u""_s;
    }));
    const QModelIndex row = sidebar.index(sidebar.rowOfPort(8080));
    EXPECT_EQ(noteOf(row, SidebarModel::noteTextRole), u"vite \u00B7 shop (deleted folder)"_s);
    EXPECT_EQ(noteOf(row, SidebarModel::noteTipRole),
              u"vite \u00B7 shop (deleted folder)\nOpen to the network\nPerhaps left behind"_s);
    ASSERT_TRUE(waitFor([&] {
        return noteOf(model.processes()->index(0), ProcessListModel::noteTextRole) != u""_s;
    }));
    EXPECT_EQ(noteOf(sidebar.index(sidebar.rowOfPort(9000)), SidebarModel::noteTextRole), u""_s);
}

TEST_F(ContentViewModelTest, StopAsksFirstAndTellsWhatIsTrueThen) {
    FakeOriginSources& sources = fixture->originSources;
    sources.addServer(42, {"node", "server.js"}, 8080).user = currentUserId();
    ASSERT_TRUE(check(u"8080"_s));
    model.requestStop();
    ASSERT_TRUE(waitFor([this] { return model.isAskingToStop(); }));
    EXPECT_EQ(model.stopMessage(), u"Stops server.js (PID 42)."_s);
    EXPECT_EQ(model.stopButton(), u"Stop server.js"_s);
    model.confirmStop();
    ASSERT_TRUE(waitFor([this] { return model.isAskingToStop(); }));
    EXPECT_EQ(model.stopMessage(),
              u"server.js has been asked to end and still holds port 8080. End "
              "it by force?"_s);
    fixture->managers.onSignal = [&](const ProcessIdentity&, ProcessSignals::Signal) {
        sources.sockets.clear();
        sources.held.clear();
        fixture->tables.end(42);
    };
    model.confirmStop();
    ASSERT_TRUE(waitFor([this] { return model.isFree(); }));
    EXPECT_EQ(fixture->managers.calls(), (std::vector<std::string>{"terminate 42", "kill 42"}));
    EXPECT_FALSE(model.isAskingToStop());

    sources.addServer(77, {"other"}, 9000).user = currentUserId() + 1;
    ASSERT_TRUE(check(u"9000"_s));
    model.requestStop();
    ASSERT_TRUE(waitFor([this] { return model.isAskingToStop(); }));
    EXPECT_EQ(model.stopButton(), u""_s) << qPrintable(model.stopMessage());
}

TEST_F(ContentViewModelTest, FreePortsAndNumbersThatAreNoPort) {
    for (const QString& text : {u"0"_s, u"65536"_s, u"٣"_s}) {
        ASSERT_TRUE(check(text));
        EXPECT_EQ(model.statusText(), u"Enter a port number"_s) << qPrintable(text);
    }
    ASSERT_TRUE(check(u"81"_s));
    EXPECT_TRUE(model.isFree());
    EXPECT_EQ(model.statusText(), u"Port 81 is free"_s);
}

TEST_F(ContentViewModelTest, FreePortsThatCantBeHadSayWhy) {
    FakeOriginSources& sources = fixture->originSources;
    sources.addProcess(42, {"python3", "hold.py"});
    sources.held[42] = {7};
    sources.uses = {{.state = TcpState::closed, .address = {}, .port = 8081, .inode = 7},
                    {.state = TcpState::established,
                     .address = {},
                     .port = 8082,
                     .foreignPort = 443,
                     .inode = 9},
                    {.state = TcpState::timeWait,
                     .address = {},
                     .port = 8083,
                     .foreignPort = 443,
                     .inode = 0,
                     .remaining = std::chrono::seconds(41)}};
    const std::pair<QString, QString> notes[] = {
        {u"8081"_s, u"python3 (PID 42) has reserved it without listening."_s},
        {u"8082"_s, u"A process of another user uses it for a connection to port 443. Some servers "
                    u"can't have it until that ends."_s},
        {u"8083"_s, u"Its last connection has just ended. Some servers can't have it for another "
                    u"41 s."_s},
        {u"84"_s, u"Only privileged programs can have it."_s},
        {u"8085"_s, u""_s},
    };
    for (const auto& [port, note] : notes) {
        ASSERT_TRUE(check(port));
        EXPECT_TRUE(waitFor([&] { return model.freeNote() == note; }))
            << qPrintable(model.freeNote());
        EXPECT_TRUE(model.isFree());
    }
    // What goes by itself is looked at again.
    ASSERT_TRUE(check(u"8083"_s));
    ASSERT_TRUE(waitFor([&] { return !model.freeNote().isEmpty(); }));
    sources.uses.clear();
    EXPECT_TRUE(waitFor([&] { return model.freeNote().isEmpty(); }));
}

TEST_F(ContentViewModelTest, TextsSayWhatWasCheckedAndStayWhileTheyFade) {
    ASSERT_TRUE(check(u"81"_s));
    model.setPortInput(u"818189"_s); // no port, so nothing else becomes known
    EXPECT_EQ(model.portInput(), u"81818"_s);
    EXPECT_EQ(model.statusText(), u"Port 81 is free"_s);
    model.setPortInput({});
    EXPECT_FALSE(model.isFree());
    EXPECT_EQ(model.freeText(), u"Port 81 is free"_s);

    ASSERT_TRUE(check(u"8080"_s));
    model.requestForceQuit();
    model.cancelForceQuit();
    EXPECT_EQ(model.confirmationButton(), u"Force Quit Sample"_s);
    EXPECT_TRUE(model.confirmationMessage().startsWith(u"Force-quit Sample (PID 42)?"_s));
    model.setPortInput(u"80803"_s);
    EXPECT_EQ(model.resultsHeader(), u"1 process on port 8080"_s);
    model.setPortInput({});
    EXPECT_EQ(model.resultsHeader(), u"1 process on port 8080"_s);
}

TEST_F(ContentViewModelTest, DigitsGoOnOrBeginANewNumber) {
    const auto type = [this](const QString& digits) {
        for (const QChar digit : digits)
            model.typeDigit(digit);
        return model.portInput();
    };
    const auto look = [this](std::chrono::milliseconds time) { fixture->now += time; };
    using namespace std::chrono_literals;

    EXPECT_EQ(type(u"80"_s), u"80"_s);
    look(5s);
    EXPECT_EQ(type(u"8"_s), u"808"_s) << "nothing was shown yet";
    ASSERT_TRUE(check(u"80"_s));
    look(1900ms);
    EXPECT_EQ(type(u"80"_s), u"8080"_s) << "a slow typist";
    ASSERT_TRUE(check(u"8080"_s));
    look(2s);
    EXPECT_EQ(type(u"90"_s), u"90"_s);
    EXPECT_EQ(type(u"00"_s), u"9000"_s);
    ASSERT_TRUE(check(u"9000"_s));
    look(2s);
    model.goIntoNumber();
    EXPECT_EQ(type(u"1"_s), u"90001"_s);

    model.setSidebarSelection(8080);
    EXPECT_EQ(type(u"2"_s), u"2"_s) << "chosen, not typed";
    fixture->appModel.setPendingPort(8080);
    EXPECT_EQ(type(u"3"_s), u"3"_s) << "handed over";
    model.setPortInput({});
    EXPECT_EQ(type(u"0808"_s), u"808"_s) << "written in another way only";
    ASSERT_TRUE(check(u"8080"_s));
    model.requestForceQuit();
    model.confirmForceQuit();
    EXPECT_EQ(type(u"4"_s), u"4"_s) << "done with that port";
}

TEST_F(ContentViewModelTest, FurtherChecksChangeOnlyWhatIsDifferent) {
    const auto holders = [this](std::initializer_list<std::int64_t> pids) {
        std::vector<OccupiedPort> list;
        for (const std::int64_t pid : pids)
            list.push_back({7000, "TCP4", "a", "A", pid, "0", ""});
        fixture->cache.replace(std::move(list));
    };
    holders({1, 2});
    ModelOperations rows(*model.processes());
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    QSignalSpy answers(&model, &ContentViewModel::statusChanged);
    const auto waitForAnswer = [&answers](auto cause) {
        answers.clear();
        cause();
        return waitFor([&answers] { return !answers.empty(); });
    };

    model.setSidebarSelection(7000); // checks at once, and once more after a moment
    ASSERT_TRUE(waitForCheck());
    EXPECT_EQ(rows.take(), QStringList{u"insert 0-1"_s});
    model.openRow(1);
    ASSERT_TRUE(waitForAnswer([] {}));
    EXPECT_EQ(fixture->tables.lookups(7000), 2);
    model.loadOccupiedPorts();
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->rowOfPort(7000) >= 0; }));
    const int row = model.sidebar()->rowOfPort(7000);
    ASSERT_TRUE(waitForAnswer([this] { model.refresh(); }));
    ASSERT_TRUE(waitForAnswer([&] { model.activateSidebarRow(row); }));
    EXPECT_EQ(fixture->tables.lookups(7000), 4);
    EXPECT_EQ(rows.take(), QStringList());
    EXPECT_EQ(model.selectedRow(), 1);
    EXPECT_TRUE(model.isInspectorOpen());

    holders({3, 2});
    ASSERT_TRUE(waitForAnswer([this] { model.refresh(); }));
    EXPECT_EQ(rows.take(), (QStringList{u"remove 0-0"_s, u"insert 0-0"_s}));
    EXPECT_EQ(model.selectedRow(), 1);
    EXPECT_TRUE(model.isInspectorOpen());
    holders({3});
    ASSERT_TRUE(waitForAnswer([this] { model.refresh(); }));
    EXPECT_EQ(rows.take(), QStringList{u"remove 1-1"_s});
    EXPECT_FALSE(model.hasSelection());
    EXPECT_EQ(focus.count(), 1);

    fixture->tables.holdNext(7000);
    model.performCheck(); // somebody asks again
    EXPECT_TRUE(model.isChecking());
    fixture->tables.letGo();
    ASSERT_TRUE(waitForCheck());
    EXPECT_EQ(rows.take(), QStringList());
    EXPECT_EQ(model.selectedRow(), 0);
    EXPECT_EQ(focus.count(), 2);
}

TEST_F(ContentViewModelTest, OvertakenAnswersAreDropped) {
    fixture->tables.holdNext(8080);
    model.setPortInput(u"8080"_s);
    model.performCheck();
    ASSERT_TRUE(waitFor([this] { return fixture->tables.lookups(8080) == 1; }));
    ASSERT_TRUE(check(u"81"_s));
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    fixture->tables.letGo();
    model.setPortInput(u"8080"_s); // whose answer comes after the overtaken one
    model.performCheck();
    ASSERT_TRUE(waitFor([&] { return !focus.empty(); }));
    EXPECT_EQ(focus.count(), 1);
}

TEST_F(ContentViewModelTest, RowsAreWalkedOpenedAndClosed) {
    fixture->cache.replace(
        {{7000, "TCP4", "a", "A", 1, "0", ""}, {7000, "TCP6", "b", "B", 2, "0", ""}});
    ASSERT_TRUE(check(u"7000"_s));
    EXPECT_EQ(model.resultsHeader(), u"2 processes on port 7000"_s);
    std::vector<int> rows;
    for (const int delta : {1, 1, -1, -1}) {
        model.moveSelection(delta);
        rows.push_back(model.selectedRow());
    }
    EXPECT_EQ(rows, (std::vector<int>{1, 1, 0, 0}));
    EXPECT_FALSE(model.isInspectorOpen());
    model.openRow(1);
    EXPECT_EQ(model.detailProcess()->displayName, "B");
    model.toggleInspector();
    EXPECT_FALSE(model.isInspectorOpen());
    model.toggleInspector();
    EXPECT_EQ(model.detailProcess()->displayName, "B");
    model.setPortInput(u"7"_s);
    EXPECT_FALSE(model.isInspectorOpen());
    EXPECT_FALSE(model.canToggleInspector());
    model.moveSelection(-1); // nothing is highlighted: the first row
    EXPECT_EQ(model.selectedRow(), 0);
}

TEST_F(ContentViewModelTest, OffersToEndOnlyWhatMayBeEnded) {
    fixture->tables.addListener(1000, 43, currentUserId(), "/systemd");
    const std::string user = std::to_string(currentUserId());
    fixture->cache.replace({{2000, "TCP4", "x", "X", 42, user, "/x"}, // holds another port
                            {2001, "TCP4", "x", "X", 0, user, "/x"},
                            {2002, "TCP4", "x", "X", (1LL << 32) + 42, user, "/x"},
                            {8080, "TCP4", "x", "X", 42, user, "/x"}});
    const std::pair<QString, bool> cases[] = {{u"8080"_s, true},  {u"9000"_s, false},
                                              {u"1000"_s, false}, {u"2000"_s, false},
                                              {u"2001"_s, false}, {u"2002"_s, false}};
    for (const auto& [port, isOffered] : cases) {
        SCOPED_TRACE(port.toStdString());
        ASSERT_TRUE(check(port));
        EXPECT_TRUE(model.hasSelection());
        EXPECT_EQ(model.canForceQuit(), isOffered);
        EXPECT_EQ(model.forceQuitHint().isEmpty(), isOffered);
        model.requestForceQuit();
        EXPECT_EQ(model.isConfirming(), isOffered);
        model.cancelForceQuit();
    }
    EXPECT_EQ(model.processes()->index(0).data(ProcessListModel::pidRole), 0);
}

TEST_F(ContentViewModelTest, RowsOfTheSidebarAreAskedAboutBeforeTheyAreLookedAtOrEnded) {
    model.appear();
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->holds(8080); }));
    const auto keyOf = [this](int port) {
        const QModelIndex row = model.sidebar()->index(model.sidebar()->rowOfPort(port));
        return row.data(SidebarModel::rowKeyRole).toString();
    };
    model.requestForceQuitOfPort(keyOf(8080));
    EXPECT_FALSE(model.isConfirming());
    ASSERT_TRUE(waitFor([this] { return model.isConfirming(); }));
    model.cancelForceQuit();
    model.openPort(keyOf(8080)); // which is answered
    EXPECT_TRUE(model.isInspectorOpen());
    model.openPort(keyOf(9000));
    EXPECT_FALSE(model.isInspectorOpen());
    ASSERT_TRUE(waitFor([this] { return model.isInspectorOpen(); }));
    EXPECT_EQ(model.detailProcess()->pid, 77);

    // Whoever has taken the port meanwhile was not meant.
    const QString key = keyOf(8080);
    fixture->tables.end(42);
    fixture->tables.addListener(8080, 43, currentUserId(), "/bin/newer");
    QSignalSpy focus(&model, &ContentViewModel::resultsFocusRequested);
    model.requestForceQuitOfPort(key);
    ASSERT_TRUE(waitFor([&] { return !focus.empty(); }));
    EXPECT_FALSE(model.isConfirming());
}

TEST_F(ContentViewModelTest, HostileNamesLeaveTheQuestionWhole) {
    fixture->tables.addListener(666, 66, currentUserId(),
                                "/bin/<b>\n\u202Ex" + std::string(4000, 'z'));
    ASSERT_TRUE(check(u"666"_s));
    model.requestForceQuit();
    EXPECT_TRUE(model.confirmationMessage().startsWith(u"Force-quit <b>\uFFFD\uFFFDxzz"_s));
    EXPECT_TRUE(
        model.confirmationMessage().endsWith(u"zz… (PID 66)? Any unsaved work will be lost."_s));
    EXPECT_LT(model.confirmationMessage().size(), 130);
}

TEST_F(ContentViewModelTest, TakesUpRequestsFromElsewhere) {
    fixture->userDefaults.values.insert(u"portToCheck"_s, u"8080"_s);
    model.appear();
    EXPECT_EQ(model.portInput(), QString()) << "a text is no port";
    EXPECT_TRUE(fixture->userDefaults.object(u"portToCheck"_s));
    EXPECT_EQ(fixture->onboardingShown, 1);

    fixture->userDefaults.values.insert(u"portToCheck"_s, 3000LL);
    fixture->settings.setHasCompletedOnboarding(true);
    model.appear();
    EXPECT_EQ(model.portInput(), u"3000"_s);
    EXPECT_FALSE(fixture->userDefaults.object(u"portToCheck"_s));
    EXPECT_EQ(fixture->onboardingShown, 1);

    QSignalSpy changes(&fixture->appModel, &AppModel::pendingPortChanged);
    fixture->tables.holdNext(8080);
    fixture->appModel.setPendingPort(8080);
    EXPECT_EQ(model.portInput(), u"8080"_s);
    EXPECT_TRUE(model.isChecking());
    fixture->tables.letGo();
    EXPECT_EQ(changes.count(), 2) << "taken up, and reset";
}

TEST_F(ContentViewModelTest, SidebarFollowsThePublishedListAndCorrectsPaths) {
    fixture->applications.add(9001, {{}, {}, u"/opt/Real.app/real"_s, {}, false});
    model.appear();
    EXPECT_TRUE(model.isLoadingSidebar());
    ASSERT_TRUE(waitFor([this] { return !model.isLoadingSidebar(); }));
    EXPECT_EQ(model.sidebar()->rowCount(), 4);
    fixture->cache.replace({{9001, "TCP4", "x", "X", 9001, "0", "/bin/x"}});
    Q_EMIT fixture->notifications.portsUpdated();
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->rowOfPort(9001) >= 0; }));
    EXPECT_EQ(model.sidebar()
                  ->index(model.sidebar()->rowOfPort(9001))
                  .data(SidebarModel::executablePathRole),
              u"/opt/Real.app/real"_s);
}

TEST_F(ContentViewModelTest, SidebarDoesNotContradictACheck) {
    model.appear();
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->holds(8080); }));
    fixture->tables.end(42);
    ASSERT_TRUE(check(u"8080"_s));
    EXPECT_TRUE(model.isFree());
    EXPECT_TRUE(waitFor([this] { return !model.sidebar()->holds(8080); }));
    fixture->tables.addListener(8080, 43, currentUserId(), "/bin/newer");
    ASSERT_TRUE(check(u"8080"_s));
    EXPECT_TRUE(waitFor([this] { return model.sidebar()->holds(8080); }));
}

TEST_F(ContentViewModelTest, SidebarKeepsTheNewestOfTwoLists) {
    fixture->tables.holdNext();
    model.loadOccupiedPorts();
    ASSERT_TRUE(waitFor([this] { return fixture->tables.isHolding(); }));
    fixture->tables.addListener(5000, 50, currentUserId(), "/bin/newer");
    model.loadOccupiedPorts();
    QSignalSpy removals(model.sidebar(), &QAbstractItemModel::rowsRemoved);
    fixture->tables.letGo();
    ASSERT_TRUE(waitFor([this] { return !model.isLoadingSidebar(); })) << "the newest ends it";
    EXPECT_GE(model.sidebar()->rowOfPort(5000), 0);
    for (int later = 0; later < 5; ++later) { // time for what becomes of the first
        model.loadOccupiedPorts();
        ASSERT_TRUE(waitFor([this] { return !model.isLoadingSidebar(); }));
    }
    EXPECT_TRUE(removals.empty());
}

TEST_F(ContentViewModelTest, MayEndWhileQuestionsAreOpen) {
    auto gated = std::make_unique<MainWindowFixture>();
    gated->tables.holdNext(8080);
    gated->model.setPortInput(u"8080"_s);
    gated->model.performCheck();
    gated->model.loadOccupiedPorts();
    gated->tables.letGo();
    gated.reset();
    QTest::qWait(0);
}

} // namespace
} // namespace zenlot
