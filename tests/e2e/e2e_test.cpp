// A stranger's server is found, looked at and stopped: by keyboard, and by what a screen reader
// offers.
#include "e2e/end_to_end.h"

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
const QString kDialogTitle = u"Force Quit Process?"_s;
const QString kForceQuit = u"Force Quit"_s;

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
