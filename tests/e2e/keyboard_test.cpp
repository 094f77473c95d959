// The window by keyboard alone: whatever disappears, the next key goes where it is meant.
#include "e2e/end_to_end.h"

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class KeyboardTest : public EndToEndTest {
  protected:
    void open() {
        ASSERT_NO_FATAL_FAILURE(EndToEndTest::open(u"Sampled"_s));
        desktop.input({u"type"_s, port});
        ASSERT_TRUE(tree.find("list item", row));
        ASSERT_TRUE(hasKeyboard("list", results()));
    }

    QString results() const { return u"1 process on port "_s + port; }
};

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
    EXPECT_TRUE(hasKeyboard("list", results()));

    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("Escape");
    EXPECT_TRUE(tree.isGone("label", u"Force Quit Process?"_s));
    EXPECT_TRUE(hasKeyboard("list", results()));
    EXPECT_EQ(server->state(), QProcess::Running);

    desktop.press("Escape");
    EXPECT_TRUE(hasKeyboard("text", u"Port"_s));
    EXPECT_TRUE(tree.find("label", u"Enter a port number"_s));
    desktop.press("shift+Tab");
    ASSERT_TRUE(hasKeyboard("list", u"Listening ports"_s));
    desktop.press("Escape");
    EXPECT_TRUE(hasKeyboard("text", u"Port"_s));
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
    EXPECT_TRUE(PrivateDesktop::hasEnded(first));
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
