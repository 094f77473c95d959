// The window by keyboard alone: whatever disappears, the next key goes where it is meant.
#include "e2e/end_to_end.h"

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class KeyboardTest : public EndToEndTest {
  protected:
    void open() {
        ASSERT_NO_FATAL_FAILURE(EndToEndTest::open(u"Sampled"_s));
        other = &desktop.startServer(u"Otherly"_s);
        otherPort = PrivateDesktop::portOf(*other);
        otherRow = u"Otherly TCP4 LISTEN PID %1 *:%2 "_s.arg(other->processId()).arg(otherPort);
        results = u"1 process on port "_s + port;
        otherResults = u"1 process on port "_s + otherPort;
        desktop.input({u"type"_s, port});
        ASSERT_TRUE(tree.find("list item", row));
        ASSERT_TRUE(hasKeyboard("list", results));
    }

    void expectNumber(const QString& number) {
        EXPECT_TRUE(hasKeyboard("text", u"Port"_s));
        EXPECT_TRUE(tree.find("label", number.isEmpty() ? u"Enter a port number"_s
                                                        : u"Port %1 is free"_s.arg(number)));
    }

    QProcess* other = nullptr;
    QString otherPort;
    QString otherRow;
    QString results;
    QString otherResults;
};

TEST_F(KeyboardTest, TheNextPortIsTypedRightAfterAForceQuit) {
    ASSERT_NO_FATAL_FAILURE(open());
    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("shift+Tab");
    ASSERT_TRUE(hasKeyboard("push button", u"Force Quit Sampled"_s));
    desktop.input({u"key"_s, u"Return"_s, u"type"_s, otherPort}); // without any pause
    EXPECT_TRUE(tree.find("list item", otherRow));
    EXPECT_TRUE(hasKeyboard("list", otherResults));
    EXPECT_TRUE(server->state() == QProcess::NotRunning || server->waitForFinished());

    // What is left to do for the first port takes nothing away.
    QTest::qWait(kUntilEverythingWasAskedAgain);
    EXPECT_TRUE(hasKeyboard("list", otherResults));
    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("shift+Tab");
    desktop.press("Return");
    EXPECT_TRUE(other->state() == QProcess::NotRunning || other->waitForFinished());
    expectNumber(otherPort);
    desktop.press("BackSpace"); // the number is selected
    expectNumber({});
}

TEST_F(KeyboardTest, EscapeLeadsBackFromEverywhere) {
    ASSERT_NO_FATAL_FAILURE(open());
    desktop.press("Return");
    ASSERT_TRUE(tree.find("label", pid + QLatin1Char(' ')));
    for (int tab = 0; tab < 20 && !tree.isThere("push button", u"Identity"_s, State::focused);
         ++tab)
        desktop.press("Tab");
    ASSERT_TRUE(hasKeyboard("push button", u"Identity"_s));
    desktop.press("Escape");
    EXPECT_TRUE(tree.isGone("push button", u"Identity"_s));
    EXPECT_TRUE(hasKeyboard("list", results));

    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("Escape");
    EXPECT_TRUE(tree.isGone("label", u"Force Quit Process?"_s));
    EXPECT_TRUE(hasKeyboard("list", results));
    EXPECT_EQ(server->state(), QProcess::Running);

    desktop.press("Escape");
    expectNumber({});
    desktop.press("shift+Tab");
    ASSERT_TRUE(hasKeyboard("list", u"Listening ports"_s));
    desktop.press("Escape");
    EXPECT_TRUE(hasKeyboard("text", u"Port"_s));
}

TEST_F(KeyboardTest, ADialogStaysWhereItIsWhileAnotherPortIsHandedOver) {
    ASSERT_NO_FATAL_FAILURE(open());
    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"port://"_s + otherPort});
    ASSERT_TRUE(tree.find("list item", otherRow));
    EXPECT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("Return");
    EXPECT_TRUE(tree.isGone("label", u"Force Quit Process?"_s));
    EXPECT_TRUE(hasKeyboard("list", otherResults));
    EXPECT_EQ(server->state(), QProcess::Running);
    EXPECT_EQ(other->state(), QProcess::Running);
}

TEST_F(KeyboardTest, AfterAClickInTheSidebarReturnLooksAtTheOwnerAndKeepsIt) {
    ASSERT_NO_FATAL_FAILURE(open());
    const auto inSidebar = tree.find("list item", otherPort + QLatin1Char(' '));
    ASSERT_TRUE(inSidebar);
    const QPoint place = tree.centre(*inSidebar);
    desktop.input({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()),
                   u"click"_s, u"1"_s});
    ASSERT_TRUE(tree.find("list item", otherRow));
    ASSERT_TRUE(hasKeyboard("list", otherResults));
    desktop.press("Return");
    const QString details = u"PID %1 "_s.arg(other->processId());
    ASSERT_TRUE(tree.find("label", details));
    desktop.press("F5");
    QTest::qWait(kUntilEverythingWasAskedAgain);
    EXPECT_TRUE(tree.isThere("label", details));
    EXPECT_TRUE(tree.isThere("list", otherResults, State::focused));
    desktop.input({u"type"_s, u"1"_s}); // a new number, since this one was chosen
    EXPECT_TRUE(hasKeyboard("text", u"Port"_s));
    EXPECT_TRUE(tree.isGone("label", details));
}

TEST_F(KeyboardTest, TheContextMenuOpensByKey) {
    ASSERT_NO_FATAL_FAILURE(open());
    for (const char* key : {"Menu", "shift+F10"}) {
        SCOPED_TRACE(key);
        desktop.press(key);
        ASSERT_TRUE(tree.find("menu item", u"Show Details"_s));
        desktop.press("Escape");
        EXPECT_TRUE(tree.isGone("menu item", u"Show Details"_s));
        EXPECT_TRUE(hasKeyboard("list", results));
    }
    desktop.press("Menu");
    ASSERT_TRUE(tree.find("menu item", u"Show Details"_s, State::focused));
    desktop.press("Return");
    ASSERT_TRUE(tree.find("label", pid + QLatin1Char(' ')));
    EXPECT_TRUE(hasKeyboard("list", results));
    desktop.press("Menu");
    ASSERT_TRUE(tree.find("menu item", u"Show Details"_s, State::focused));
    desktop.press("Down");
    desktop.press("Return");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("Return");
    EXPECT_TRUE(tree.isGone("label", u"Force Quit Process?"_s));
    EXPECT_TRUE(hasKeyboard("list", results));
}

// On this desktop there is no status area.
TEST_F(KeyboardTest, TheCommandsOfTheApplicationAreInTheWindow) {
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(tree.find("push button", u"Menu"_s));
    const auto waitForMenu = [this] {
        return desktop.input(u"search --sync --onlyvisible --name ^Menu$"_s.split(u' '));
    };
    desktop.press("F10");
    ASSERT_EQ(waitForMenu(), 0);
    desktop.press("Escape");
    desktop.press("BackSpace"); // which is for the field again
    ASSERT_TRUE(hasKeyboard("text", u"Port"_s));
    ASSERT_TRUE(tree.pressOnce("push button", u"Menu"_s));
    ASSERT_EQ(waitForMenu(), 0);
    desktop.press("Up");
    desktop.press("Return");
    EXPECT_TRUE(zenlot->waitForFinished());
    EXPECT_EQ(zenlot->exitCode(), 0);
}

TEST(OptionsTest, AreForTheOneThatRuns) {
    PrivateDesktop desktop;
    const AccessibleTree tree(desktop.sessionBus());
    const auto startAgain = [&](const QString& option) {
        QProcess& again = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {option});
        EXPECT_TRUE(again.waitForFinished());
        EXPECT_EQ(again.exitCode(), 0) << option.toStdString();
    };
    startAgain(u"--quit"_s); // when there is none
    QProcess& first = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
    ASSERT_TRUE(desktop.waitForLog("conflict listener started"));
    startAgain(u"--background"_s);
    startAgain(u"--settings"_s);
    EXPECT_TRUE(tree.find("frame", u"Settings"_s));
    EXPECT_FALSE(tree.isThere("frame", u"Zenlot"_s));
    startAgain(u"--check-port"_s);
    EXPECT_TRUE(tree.find("frame", u"Zenlot"_s));
    EXPECT_TRUE(tree.find("text", u"Port"_s, AccessibleTree::State::focused));
    startAgain(u"--quit"_s);
    EXPECT_TRUE(first.state() == QProcess::NotRunning || first.waitForFinished());
    EXPECT_EQ(first.exitCode(), 0);

    for (const QString& option : {u"--help"_s, u"--version"_s}) {
        QProcess bare;
        bare.setProcessEnvironment(QProcessEnvironment()); // as in a terminal without a display
        bare.start(QStringLiteral(ZENLOT_PROGRAM), {option});
        EXPECT_TRUE(bare.waitForFinished());
        EXPECT_EQ(bare.exitCode(), 0);
        EXPECT_TRUE(bare.readAllStandardOutput().contains("zenlot")) << option.toStdString();
    }
}

} // namespace
} // namespace zenlot
