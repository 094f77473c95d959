// The real QML, driven by keys and clicks.
#include "inventory_fixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

// A name that tries to be more than a name.
const QString kHostileName = u"<i>x a\nb\u202Ec"_qs + QString(4000, u'z');

// The item below `root` that says this, or begins so, to people who hear the window.
QQuickItem* itemNamed(QQuickItem* root, const QString& name) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(root);
    if (root->isVisible() && interface && interface->text(QAccessible::Name).startsWith(name))
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = itemNamed(child, name))
            return found;
    }
    return nullptr;
}

class ContentViewTest : public testing::Test {
  protected:
    void open() {
        fixture.settings.setHasCompletedOnboarding(true);
        view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
        view.setInitialProperties({{QStringLiteral("viewModel"), QVariant::fromValue(&model)}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/MainWindow/ContentView.qml")));
        view.resize(720, 480);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    bool waitFor(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 10'000);
    }

    QQuickItem* waitForItem(const QString& name) {
        QQuickItem* item = nullptr;
        waitFor([&] { return (item = itemNamed(view.contentItem(), name)) != nullptr; });
        return item;
    }

    bool waitForNoItem(const QString& name) {
        return waitFor([&] { return !itemNamed(view.contentItem(), name); });
    }

    void type(const char* keys) {
        for (; *keys != 0; ++keys)
            QTest::keyClick(&view, *keys);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&view, static_cast<Qt::Key>(key), modifiers);
    }

    void click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(&view, button, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    MainWindowFixture fixture;
    ContentViewModel& model = fixture.model;
    QQuickView view;
};

TEST_F(ContentViewTest, KeyboardAloneFindsOpensAndEndsAProcess) {
    fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
    open();
    type("8x080");
    ASSERT_NE(waitForItem(u"Sample TCP4 LISTEN PID 42"_qs), nullptr);
    EXPECT_EQ(itemNamed(view.contentItem(), u"Port"_qs)->property("text"), u"8080"_qs);
    ASSERT_TRUE(waitFor([this] { return model.selectedRow() == 0; }));
    press(Qt::Key_Return);
    EXPECT_TRUE(model.isInspectorOpen());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"42"_qs);

    press(Qt::Key_Delete);
    ASSERT_NE(waitForItem(u"Force-quit Sample (PID 42)?"_qs), nullptr);
    press(Qt::Key_Return); // Cancel has the keyboard
    ASSERT_TRUE(waitForNoItem(u"Force-quit Sample"_qs));
    press(Qt::Key_Delete);
    ASSERT_NE(waitForItem(u"Force-quit Sample (PID 42)?"_qs), nullptr);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Return);
    EXPECT_NE(waitForItem(u"Port 8080 is free"_qs), nullptr);
    EXPECT_TRUE(waitForNoItem(u"Sample"_qs));
}

TEST_F(ContentViewTest, DigitsTypedIntoTheResultsGoOnInTheField) {
    fixture.tables.addListener(80, 42, currentUserId(), "/opt/Sample.app/server");
    fixture.tables.addListener(8080, 43, currentUserId(), "/opt/Other.app/server");
    open();
    type("80");
    ASSERT_NE(waitForItem(u"Sample TCP4"_qs), nullptr);
    ASSERT_TRUE(waitFor([this] { return model.hasSelection(); }));
    type("80");
    EXPECT_NE(waitForItem(u"Other TCP4"_qs), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(model.portInput(), QString());
    EXPECT_NE(waitForItem(u"Enter a port number"_qs), nullptr);
}

TEST_F(ContentViewTest, SidebarIsReachedByClickAndByKey) {
    fixture.tables.addListener(22, 43, currentUserId() + 1, "/bin/" + kHostileName.toStdString());
    fixture.tables.addListener(3000, 44, currentUserId(), "/opt/Sample.app/a");
    fixture.tables.addListener(3001, 45, currentUserId(), "/opt/Sample.app/b");
    open();
    const QQuickItem* row = waitForItem(u"22 <i>x a\uFFFDb\uFFFDc"_qs);
    ASSERT_NE(row, nullptr);
    EXPECT_LT(row->height(), 50);
    EXPECT_LE(row->width(), 240);
    click(row, Qt::RightButton);
    ASSERT_NE(waitForItem(u"Copy Port"_qs), nullptr);
    press(Qt::Key_Escape);
    ASSERT_TRUE(waitForNoItem(u"Copy Port"_qs));
    EXPECT_EQ(model.portInput(), QString()) << "only the menu was asked for";
    click(row);
    EXPECT_NE(waitForItem(u"1 process on port 22"_qs), nullptr);
    EXPECT_EQ(model.portInput(), u"22"_qs);

    // The click checks at once and the new text once more; each gives the results the keyboard.
    ASSERT_TRUE(waitFor([this] { return fixture.tables.lookups(22) == 2 && !model.isChecking(); }));

    const QQuickItem* group = waitForItem(u"Sample 2"_qs);
    ASSERT_NE(group, nullptr);
    click(group);
    EXPECT_NE(waitForItem(u"3001 TCP4"_qs), nullptr);
    itemNamed(view.contentItem(), u"Listening ports"_qs)->forceActiveFocus();
    press(Qt::Key_Left);
    EXPECT_TRUE(waitForNoItem(u"3001 TCP4"_qs));
    press(Qt::Key_Right);
    ASSERT_NE(waitForItem(u"3000 TCP4"_qs), nullptr);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(model.portInput(), u"3000"_qs);
}

TEST_F(ContentViewTest, OnlyVisibleRowsOfALongListExist) {
    for (std::uint16_t port = 2000; port < 3200; ++port)
        fixture.tables.addListener(port, port, currentUserId(), "/bin/server");
    open();
    ASSERT_TRUE(waitFor([this] { return model.sidebar()->rowCount() == 1201; }));
    ASSERT_NE(waitForItem(u"2000 Server"_qs), nullptr);
    const QQuickItem* list = itemNamed(view.contentItem(), u"Listening ports"_qs);
    EXPECT_LT(list->property("contentItem").value<QQuickItem*>()->childItems().size(), 100);
}

} // namespace
} // namespace zenlot
