// A stranger's server is found, looked at and stopped: by keyboard, and by what a screen reader
// offers.
#include "e2e/accessible_tree.h"
#include "e2e/private_desktop.h"

#include <QTest>
#include <gtest/gtest.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using State = AccessibleTree::State;
constexpr int kUntilEverythingWasAskedAgain = 1500;
const QString kDialogTitle = u"Force Quit Process?"_s;
const QString kForceQuit = u"Force Quit"_s;

class EndToEndTest : public testing::Test {
  protected:
    // Starts a web server by a program with the given name, the background monitor, and when that
    // has published the server, the application.
    void open(const QString& name) {
        server = &desktop.startServer(name);
        port = PrivateDesktop::portOf(*server);
        desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
        ASSERT_TRUE(QTest::qWaitFor([this] { return isPublished(); }, kPatience));
        pid = u"PID %1"_s.arg(server->processId());
        // What would turn the direction of a line is shown as a mark.
        shownName = QString(name).replace(QChar(0x202E), QChar(0xFFFD));
        row = u"%1 TCP4 LISTEN %2 *:%3 "_s.arg(shownName, pid, port);

        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
        ASSERT_TRUE(tree.find("frame", u"Zenlot"_s, State::active));
        ASSERT_TRUE(tree.find("text", u"Port"_s, State::focused));
        // A list makes only the rows that fit, and the machine may have many listeners.
        desktop.start("xdotool search --sync --onlyvisible --name ^Zenlot$ windowsize 860 3900");
        ASSERT_TRUE(tree.find("list item", port + QLatin1Char(' ')));
    }

    bool isPublished() const {
        return desktop.files()
                   .read("XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json")
                   .find("{\"port\":" + port.toStdString() + ",") != std::string::npos;
    }

    bool hasKeyboard(const char* role, const QString& name) const {
        return tree.find(role, name, State::focused).has_value();
    }

    void expectServerIsGone() {
        EXPECT_TRUE(server->state() == QProcess::NotRunning || server->waitForFinished());
        EXPECT_EQ(server->exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(server->exitCode(), SIGKILL);
        EXPECT_TRUE(tree.isGone("list item", row));
        EXPECT_TRUE(tree.isGone("list item", port + QLatin1Char(' ')));
        EXPECT_TRUE(tree.find("label", u"Port %1 is free"_s.arg(port)));
        // The window checks again after a moment, and the monitor publishes: neither may bring the
        // server back.
        EXPECT_TRUE(QTest::qWaitFor([this] { return !isPublished(); }, kPatience));
        QTest::qWait(kUntilEverythingWasAskedAgain);
        EXPECT_TRUE(tree.isGone("list item", row));
        EXPECT_TRUE(tree.isGone("list item", port + QLatin1Char(' ')));
        EXPECT_TRUE(tree.find("label", u"Port %1 is free"_s.arg(port)));
        EXPECT_EQ(zenlot->readAllStandardError().toStdString(), "");
    }

    PrivateDesktop desktop;
    AccessibleTree tree{desktop.sessionBus()};
    QProcess* server = nullptr;
    QProcess* zenlot = nullptr;
    QString port;
    QString pid;
    QString shownName;
    QString row;
};

TEST_F(EndToEndTest, KeyboardFindsLooksAtAndStopsAServer) {
    ASSERT_NO_FATAL_FAILURE(open(u"Sampled"_s));
    const QString results = u"1 process on port "_s + port;

    desktop.input({u"type"_s, port});
    ASSERT_TRUE(tree.find("list item", row));
    ASSERT_TRUE(hasKeyboard("list", results));
    desktop.press("Return");
    EXPECT_TRUE(tree.find("label", pid + QLatin1Char(' ')));

    // Cancel has the keyboard first, and keeps the server alive.
    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    EXPECT_TRUE(tree.find("label", kDialogTitle));
    desktop.press("Return");
    ASSERT_TRUE(tree.isGone("label", kDialogTitle));
    EXPECT_EQ(server->state(), QProcess::Running);

    ASSERT_TRUE(hasKeyboard("list", results));
    desktop.press("Delete");
    ASSERT_TRUE(hasKeyboard("push button", u"Cancel"_s));
    desktop.press("shift+Tab");
    ASSERT_TRUE(hasKeyboard("push button", u"Force Quit Sampled"_s));
    desktop.press("Return");
    expectServerIsGone();
}

// Neither a key nor a pixel. The toolkit lets nobody set a field's text from outside, so the port
// is chosen in the sidebar. Whatever the server is called stays plain text.
TEST_F(EndToEndTest, ScreenReaderFindsLooksAtAndStopsAServer) {
    ASSERT_NO_FATAL_FAILURE(open(QString::fromUtf8("A <b>b<br>\u202E")));
    const QString question = u"Force-quit "_s + shownName + u" ("_s;

    ASSERT_TRUE(tree.press("list item", port + QLatin1Char(' '), "list item", row));
    ASSERT_TRUE(tree.press("list item", row, "label", pid + QLatin1Char(' ')));
    ASSERT_TRUE(tree.press("push button", kForceQuit, "label", question));
    ASSERT_TRUE(tree.press("push button", kForceQuit + QLatin1Char(' ') + shownName, "label",
                           u"Port %1 is free"_s.arg(port)));
    expectServerIsGone();
}

} // namespace
} // namespace zenlot
