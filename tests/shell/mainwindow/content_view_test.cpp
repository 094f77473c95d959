// The real QML, driven by keys and clicks.
#include "inventory_fixture.h"
#include "support/window_driver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QStyleHints>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <algorithm>

Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// A name that tries to be more than a name.
const QString kHostileName = u"<i>x a\nb\u202Ec"_s + QString(4000, u'z');

class ContentViewTest : public ViewTest {
  protected:
    void open() {
        fixture.settings.setHasCompletedOnboarding(true);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.resize(720, 480);
        ViewDriver::open("MainWindow/ContentView.qml",
                         {{u"viewModel"_s, QVariant::fromValue(&model)}});
    }

    // Waits for a list of which one row has it.
    bool hasKeyboard(const QString& list) {
        return waitFor(
            [&] { return std::ranges::any_of(itemsNamed(list), &QQuickItem::hasActiveFocus); });
    }

    MainWindowFixture fixture;
    ContentViewModel& model = fixture.model;
};

TEST_F(ContentViewTest, KeyboardAloneFindsOpensAndEndsAProcess) {
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    open();
    type(u"8x080"_s);
    ASSERT_NE(waitForItem(u"Sample TCP4 LISTEN PID 42"_s), nullptr);
    EXPECT_EQ(itemFrom(u"Port"_s)->property("text"), u"8080"_s);
    ASSERT_TRUE(waitFor([this] { return model.selectedRow() == 0; }));
    press(Qt::Key_Return);
    EXPECT_TRUE(model.isInspectorOpen());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"42"_s);

    press(Qt::Key_Delete);
    ASSERT_NE(waitForItem(u"Force-quit Sample (PID 42)?"_s), nullptr);
    press(Qt::Key_Return); // Cancel has the keyboard
    ASSERT_TRUE(waitForNoItem(u"Force-quit Sample"_s));
    press(Qt::Key_Delete);
    ASSERT_NE(waitForItem(u"Force-quit Sample (PID 42)?"_s), nullptr);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Return);
    EXPECT_NE(waitForItem(u"Port 8080 is free"_s), nullptr);
    EXPECT_TRUE(waitForNoItem(u"Sample"_s));
    EXPECT_TRUE(model.isInspectorOpen()) << "what was being read stays";
    EXPECT_TRUE(comesToFocus(u"Port"_s));
    type(u"9"_s);
    EXPECT_EQ(model.portInput(), u"9"_s);
}

TEST_F(ContentViewTest, EndOfACheckTakesTheKeyboardFromNoDialogAndNoMenu) {
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    fixture.tables.addListener(9000, 43, currentUserId(), "/opt/Other.app/server");
    open();
    type(u"8080"_s);
    ASSERT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
    press(Qt::Key_Delete);
    ASSERT_TRUE(comesToFocus(u"Cancel"_s));
    fixture.appModel.setPendingPort(9000);
    ASSERT_NE(waitForItem(u"1 process on port 9000"_s), nullptr);
    model.focusPortField();
    EXPECT_EQ(focused(), u"Cancel"_s);
    press(Qt::Key_Return);
    ASSERT_TRUE(waitForNoItem(u"Force-quit Sample"_s));
    EXPECT_TRUE(fixture.tables.process(42));
    EXPECT_TRUE(hasKeyboard(u"1 process on port 9000"_s));

    click(itemFrom(u"Other TCP4"_s), Qt::RightButton);
    ASSERT_NE(waitForItem(u"Copy Port"_s), nullptr);
    fixture.appModel.setPendingPort(8080);
    ASSERT_NE(waitForItem(u"1 process on port 8080"_s), nullptr);
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
        press(key);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"9000"_s);
    ASSERT_TRUE(waitForNoItem(u"Copy Port"_s));
    EXPECT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
}

TEST_F(ContentViewTest, KeysForTheNumberReachTheFieldFromEverywhere) {
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    open();
    for (const QString& place : {u"Listening ports"_s, u"Refresh"_s, u"Toggle Inspector"_s}) {
        SCOPED_TRACE(place.toStdString());
        press(Qt::Key_Escape);
        type(u"8080"_s);
        ASSERT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
        itemFrom(place)->forceActiveFocus();
        press(Qt::Key_Backspace);
        EXPECT_EQ(model.portInput(), u"808"_s);
        EXPECT_EQ(focused(), u"Port"_s);
        itemFrom(place)->forceActiveFocus();
        QGuiApplication::clipboard()->setText(u"port 8081"_s);
        press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(model.portInput(), u"8081"_s);
        EXPECT_EQ(focused(), u"Port"_s);
    }
}

TEST_F(ContentViewTest, DigitsTypedIntoTheResultsGoOnInTheField) {
    fixture.tables.addListener(80, 42, currentUserId(), "/opt/Sample.app/server");
    fixture.tables.addListener(8080, 43, currentUserId(), "/opt/Other.app/server");
    open();
    type(u"80"_s);
    ASSERT_NE(waitForItem(u"Sample TCP4"_s), nullptr);
    ASSERT_TRUE(waitFor([this] { return model.hasSelection(); }));
    type(u"80"_s);
    EXPECT_NE(waitForItem(u"Other TCP4"_s), nullptr);
    fixture.now += ContentViewModel::kLookAtTheAnswer;
    type(u"81"_s);
    EXPECT_NE(waitForItem(u"Port 81 is free"_s), nullptr);
    EXPECT_EQ(model.portInput(), u"81"_s);
    fixture.now += ContentViewModel::kLookAtTheAnswer; // the field still has the keyboard
    type(u"82"_s);
    EXPECT_EQ(model.portInput(), u"82"_s);
    press(Qt::Key_Escape);
    EXPECT_EQ(model.portInput(), QString());
    EXPECT_NE(waitForItem(u"Enter a port number"_s), nullptr);
}

TEST_F(ContentViewTest, ContextMenusOpenByKeyAndWhatCannotBeEndedSaysWhy) {
    fixture.tables.addListener(8080, 42, currentUserId() + 1, "/opt/Sample.app/server");
    open();
    type(u"8080"_s);
    ASSERT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
    press(Qt::Key_Menu);
    ASSERT_TRUE(comesToFocus(u"Show Details"_s));
    press(Qt::Key_Return);
    EXPECT_TRUE(model.isInspectorOpen());
    EXPECT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
    EXPECT_FALSE(itemFrom(u"Force Quit"_s)->isEnabled());
    press(Qt::Key_Delete);
    EXPECT_NE(waitForItem(u"It belongs to another user. To end it: sudo kill -9 42"_s), nullptr);

    ASSERT_NE(waitForItem(u"8080 Sample"_s), nullptr);
    itemFrom(u"Listening ports"_s)->forceActiveFocus();
    press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(comesToFocus(u"Show Details"_s));
    EXPECT_FALSE(waitForItem(u"Force Quit…"_s)->isEnabled());
    press(Qt::Key_Escape);
    EXPECT_TRUE(hasKeyboard(u"Listening ports"_s));
}

TEST_F(ContentViewTest, EachCopyCommandCopiesWhatItSays) {
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    open();
    type(u"8080"_s);
    ASSERT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
    const std::pair<QString, QString> commands[] = {{u"Copy Port"_s, u"8080"_s},
                                                    {u"Copy PID"_s, u"42"_s},
                                                    {u"Copy Path"_s, u"/opt/Sample.app/server"_s}};
    const std::pair<QString, QString> lists[] = {{u"1 process on port 8080"_s, u"42"_s},
                                                 {u"Listening ports"_s, u"8080"_s}};
    QClipboard& clipboard = *QGuiApplication::clipboard();
    for (const auto& [list, copiedByKey] : lists) {
        SCOPED_TRACE(list.toStdString());
        itemsNamed(list).last()->forceActiveFocus(); // a heading may have the same name
        clipboard.clear();
        press(Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(clipboard.text(), copiedByKey);
        for (const auto& [command, copied] : commands) {
            press(Qt::Key_Menu);
            const QQuickItem* item = waitForItem(command);
            ASSERT_NE(item, nullptr) << command.toStdString();
            clipboard.clear();
            click(item);
            EXPECT_EQ(clipboard.text(), copied) << command.toStdString();
            ASSERT_TRUE(waitForNoItem(u"Copy Port"_s));
        }
    }
}

TEST_F(ContentViewTest, ACutOffNameIsWholeInATip) {
    fixture.tables.addListener(22, 43, currentUserId(), "/bin/" + std::string(100, 'n'));
    open();
    const QQuickItem* row = waitForItem(u"22 N"_s);
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(waitFor([&] { // the row has yet to come to its place
        QTest::mouseMove(window(), row->mapToScene(row->boundingRect().center()).toPoint());
        return itemFrom(u'N' + QString(99, u'n')) != nullptr;
    }));
}

TEST_F(ContentViewTest, SidebarIsReachedByClickAndByKey) {
    fixture.tables.addListener(22, 43, currentUserId() + 1, "/bin/" + kHostileName.toStdString());
    fixture.tables.addListener(3000, 44, currentUserId(), "/opt/Sample.app/a");
    fixture.tables.addListener(3001, 45, currentUserId(), "/opt/Sample.app/b");
    open();
    const QQuickItem* row = waitForItem(u"22 <i>x a\uFFFDb\uFFFDc"_s);
    ASSERT_NE(row, nullptr);
    EXPECT_LT(row->height(), 50);
    EXPECT_LE(row->width(), 240);
    click(row, Qt::RightButton);
    ASSERT_NE(waitForItem(u"Copy Port"_s), nullptr);
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitForNoItem(u"Copy Port"_s));
    EXPECT_EQ(model.portInput(), QString()) << "only the menu was asked for";
    click(row);
    EXPECT_NE(waitForItem(u"1 process on port 22"_s), nullptr);
    EXPECT_EQ(model.portInput(), u"22"_s);

    // The click checks at once and the new text once more; each gives the results the keyboard.
    ASSERT_TRUE(waitFor([this] { return fixture.tables.lookups(22) == 2 && !model.isChecking(); }));

    const QQuickItem* group = waitForItem(u"Sample 2"_s);
    ASSERT_NE(group, nullptr);
    const auto state = [this] {
        return QAccessible::queryAccessibleInterface(itemFrom(u"Sample 2"_s))
            ->text(QAccessible::Description);
    };
    EXPECT_EQ(state(), u"closed"_s);
    click(group);
    EXPECT_NE(waitForItem(u"3001 TCP4"_s), nullptr);
    EXPECT_EQ(state(), u"open"_s);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(itemFrom(u"3001 TCP4"_s))->childCount(), 0)
        << "nothing repeats its row";
    itemFrom(u"Listening ports"_s)->forceActiveFocus();
    press(Qt::Key_Left);
    EXPECT_TRUE(waitForNoItem(u"3001 TCP4"_s));
    press(Qt::Key_Right);
    ASSERT_NE(waitForItem(u"3000 TCP4"_s), nullptr);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(model.portInput(), u"3000"_s);
}

TEST_F(ContentViewTest, NothingMovesForWhoWantsNoMotion) {
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    view.engine()->addImportPath(u":/qt/qml"_s);
    auto* theme =
        view.engine()->singletonInstance<QObject*>(qmlTypeId("Zenlot.Style", 1, 0, "Theme"));
    ASSERT_NE(theme, nullptr);
    theme->setProperty("motion", 0);
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    open();
    int frames = 0;
    QObject::connect(&view, &QQuickWindow::frameSwapped, &view, [&] { ++frames; });
    const auto framesWhileNothingHappens = [&] {
        QTest::qWait(50);
        frames = 0;
        QTest::qWait(300);
        return frames;
    };
    fixture.tables.holdNext(8080);
    type(u"8080"_s);
    ASSERT_TRUE(waitFor([this] { return fixture.tables.isHolding(); }));
    EXPECT_TRUE(model.isChecking());
    EXPECT_EQ(framesWhileNothingHappens(), 0) << "the wheel stands still";
    fixture.tables.letGo();
    ASSERT_TRUE(hasKeyboard(u"1 process on port 8080"_s));
    EXPECT_EQ(framesWhileNothingHappens(), 0);
    EXPECT_EQ(itemFrom(u"Sample TCP4"_s)->opacity(), 1) << "rows are there at once";
}

TEST_F(ContentViewTest, APortThatIsHandedOverIsScrolledIntoViewWhenTheRowsCome) {
    for (std::uint16_t port = 2000; port < 3200; ++port)
        fixture.tables.addListener(port, port, currentUserId(), "/bin/server");
    fixture.appModel.setPendingPort(3100);
    open();
    for (const int port : {3100, 2100}) {
        fixture.appModel.setPendingPort(port);
        const QString name = QString::number(port) + u" Server"_s;
        const QQuickItem* list = itemsNamed(u"Listening ports"_s).value(0);
        EXPECT_TRUE(waitFor([&] {
            const QQuickItem* row = itemFrom(name);
            return row &&
                   QRectF({}, list->size()).contains(row->mapRectToItem(list, {{}, row->size()}));
        })) << port;
        EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 100)
            << "only rows in sight exist";
    }
}

} // namespace
} // namespace zenlot
