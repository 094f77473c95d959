#include "shell/menubar/status_menu.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QTest>
#include <gmock/gmock.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class StatusMenuTest : public testing::Test {
  public:
    StatusMenuTest() {
        QObject::connect(&menu, &StatusMenu::portSearchCommitted, &context,
                         [this] { committed.append(menu.searchField().text()); });
        menu.popUp(QRect(10, 0, 20, 20));
        EXPECT_TRUE(QTest::qWaitFor([this] { return menu.searchField().hasFocus(); }));
    }

    // As the user's keys reach whatever has the keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(menu.focusWidget() == nullptr ? &menu : menu.focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }

    QStringList committed;
    QStringList ran;
    QObject context;
    StatusMenu menu{
        {{.title = u"A & _B"_s, .symbol = u"trash"_s},
         {.title = u"First"_s, .run = [this] { ran.append(u"first"_s); }},
         {.title = u"Off"_s, .run = [this] { ran.append(u"off"_s); }, .isEnabled = false},
         {},
         {.title = u"Last"_s,
          .keyEquivalent = u"Ctrl+Q"_s,
          .run = [this] { ran.append(u"last"_s); }}},
        &context,
        StatusMenu::Edges::soft};
};

TEST_F(StatusMenuTest, KeysTypeAPortAndTheArrowsWalkTheCommands) {
    QTest::keyClicks(menu.focusWidget(), u"80a80"_s);
    press(Qt::Key_Return);
    EXPECT_THAT(committed, testing::ElementsAre(u"80a80"_s));

    press(Qt::Key_Down);
    EXPECT_EQ(menu.activeAction()->text(), u"First"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(menu.activeAction()->text(), u"Last"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(menu.activeAction(), nullptr);
    press(Qt::Key_Up);
    EXPECT_EQ(menu.activeAction()->text(), u"Last"_s);
    press(Qt::Key_1); // goes on typing
    EXPECT_EQ(menu.activeAction(), nullptr);
    press(Qt::Key_Enter);
    EXPECT_THAT(committed, testing::ElementsAre(u"80a80"_s, u"80a801"_s));
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_THAT(ran, testing::ElementsAre(u"first"_s));
    EXPECT_FALSE(menu.isVisible());
}

TEST_F(StatusMenuTest, ThePointerChoosesNothingForSomebodyWhoTypes) {
    const auto hoverOverLast = [this] {
        const QPoint last = menu.actionGeometry(menu.actions().last()).center();
        QTest::mouseMove(menu.windowHandle(), last - QPoint(3, 0));
        QTest::mouseMove(menu.windowHandle(), last);
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return menu.activeAction() == menu.actions().last(); }));
    };
    hoverOverLast();
    QTest::keyClicks(menu.focusWidget(), u"8080"_s);
    hoverOverLast();
    press(Qt::Key_Return);
    EXPECT_THAT(committed, testing::ElementsAre(u"8080"_s));
    EXPECT_TRUE(ran.isEmpty());
}

TEST_F(StatusMenuTest, KeyEquivalentsRunAndEscapeCloses) {
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_THAT(ran, testing::ElementsAre(u"last"_s));
    EXPECT_FALSE(menu.isVisible());
    menu.popUp(QRect(10, 0, 20, 20));
    press(Qt::Key_Escape);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(ran.size(), 1);
}

TEST_F(StatusMenuTest, ItOpensBesideTheIconInsideOfTheScreen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect corners[]{{0, 0, 24, 24},
                          {screen.width() - 24, 0, 24, 24},
                          {screen.width() - 24, screen.height() - 24, 24, 24}};
    for (const QRect& icon : corners) {
        menu.close();
        menu.popUp(icon);
        EXPECT_TRUE(screen.contains(menu.geometry()));
        EXPECT_FALSE(menu.geometry().intersects(icon));
    }
}

} // namespace
} // namespace zenlot
