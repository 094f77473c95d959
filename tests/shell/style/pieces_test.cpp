// The shared pieces in a window, worked with the keyboard and the mouse.
#include "support/window_driver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

class PiecesTest : public ViewTest {
  protected:
    PiecesTest() { view.engine()->addImportPath(QStringLiteral(":/qt/qml")); }

    // Shows the content of an item of 400 by 400.
    void show(const char* content) {
        auto* component = new QQmlComponent(view.engine(), &view);
        component->setData(QByteArray("import QtQuick\nimport Zenlot.Style\n"
                                      "Item { id: root; width: 400; height: 400; ") +
                               content + "}",
                           QUrl());
        auto* item = component->create();
        ASSERT_NE(item, nullptr) << component->errorString().toStdString();
        view.setContent(QUrl(), component, item);
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    QVariant value(const char* name) const { return view.rootObject()->property(name); }
};

TEST_F(PiecesTest, TextOfOthersStaysOneLineOfPlainText) {
    show("property alias lines: text.lineCount; property alias tall: text.height;"
         "property alias one: other.height;"
         "StyleText { id: other; text: 'x' }"
         "StyleText { id: text; width: 100; text: '<b>a</b>\\n\\u202Eb\\n' + 'c'.repeat(4000) }");
    EXPECT_EQ(value("lines").toInt(), 1);
    EXPECT_DOUBLE_EQ(value("tall").toDouble(), value("one").toDouble());
}

TEST_F(PiecesTest, SelectableTextIsCopiedAndNotChanged) {
    show(
        "property alias text: text.text;"
        "SelectableText { id: text; focus: true; width: 100; text: '<i>path</i> of some length' }");
    press(Qt::Key_X);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(value("text").toString(), QStringLiteral("<i>path</i> of some length"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), value("text").toString());
}

TEST_F(PiecesTest, ButtonsAreClickedWithSpaceAndReturnUnlessDisabled) {
    show("property int clicks: 0;"
         "GlassButton { id: glass; focus: true; text: 'Glass'; onClicked: ++root.clicks;"
         "    KeyNavigation.tab: icon }"
         "IconButton { id: icon; y: 100; symbol: 'plus'; text: 'Add'; onClicked: root.clicks += 10;"
         "    enabled: root.clicks < 30 }");
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(value("clicks").toInt(), 2);
    press(Qt::Key_Tab);
    for (int time = 0; time < 4; ++time)
        press(Qt::Key_Return);
    EXPECT_EQ(value("clicks").toInt(), 32);
}

TEST_F(PiecesTest, SectionLeavesItsStateToTheOwnerAndHidesWhatIsClosed) {
    show("property bool open: true; property alias tall: section.height;"
         "property alias inside: inside.visible; property alias label: label.x;"
         "CollapsibleSection { id: section; title: 'Identity'; width: 300; expanded: root.open;"
         "    onToggled: root.open = !root.open;"
         "    StyleText { id: label; text: 'some text' }"
         "    IconButton { id: inside; symbol: 'plus'; text: 'Add' } }");
    const double open = value("tall").toDouble();
    EXPECT_DOUBLE_EQ(value("label").toDouble(), 0);
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_FALSE(value("open").toBool());
    EXPECT_TRUE(waitFor([&] { return !value("inside").toBool(); }));
    EXPECT_LT(value("tall").toDouble(), 30);
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_TRUE(value("open").toBool());
    EXPECT_TRUE(waitFor([&] { return value("tall").toDouble() == open; }));
}

struct Answer {
    const char* name;
    std::vector<Qt::Key> keys;
    QString answer;
};

class ConfirmDialogTest : public PiecesTest, public testing::WithParamInterface<Answer> {};

TEST_P(ConfirmDialogTest, IsAnsweredWithTheKeyboard) {
    show("property string answer; property alias opened: dialog.opened;"
         "property alias back: opener.activeFocus; property alias tall: dialog.height;"
         "GlassButton { id: opener; focus: true; text: 'Ask'; onClicked: dialog.open() }"
         "ConfirmDialog { id: dialog; title: 'Sure?'; message: '<b>x</b> '.repeat(2000);"
         "    destructiveText: 'Force Quit ' + 'name '.repeat(800);"
         "    onAccepted: root.answer += 'accepted'; onRejected: root.answer += 'rejected' }");
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return value("opened").toBool(); }));
    EXPECT_FALSE(value("back").toBool());
    EXPECT_LT(value("tall").toDouble(), 400);
    for (const Qt::Key key : GetParam().keys)
        press(key);
    EXPECT_EQ(value("answer").toString(), GetParam().answer);
    EXPECT_TRUE(waitFor([&] { return value("back").toBool(); }));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ConfirmDialogTest,
    testing::Values(Answer{"Escape", {Qt::Key_Escape}, QStringLiteral("rejected")},
                    Answer{"ReturnAtFirst", {Qt::Key_Return}, QStringLiteral("rejected")},
                    Answer{
                        "TabThenReturn", {Qt::Key_Tab, Qt::Key_Return}, QStringLiteral("accepted")},
                    Answer{"UpThenSpace", {Qt::Key_Up, Qt::Key_Space}, QStringLiteral("accepted")},
                    Answer{"TabStaysInside",
                           {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return},
                           QStringLiteral("rejected")}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(PiecesTest, MenuIsWalkedWithTheKeyboardAndAsWideAsItsItems) {
    show("property string chosen; property alias opened: menu.opened;"
         "property real spare: menu.width - item.implicitWidth;"
         "GlassButton { focus: true; text: 'Menu'; onClicked: menu.open() }"
         "StyleMenu { id: menu;"
         "    StyleMenuItem { text: 'Copy Port'; onTriggered: root.chosen += 'port' }"
         "    StyleMenuSeparator {}"
         "    StyleMenuItem { id: item; text: 'Something with quite a long name'; symbol: 'trash';"
         "        shortcutText: 'Del'; onTriggered: root.chosen += 'long' } }");
    press(Qt::Key_Return);
    ASSERT_TRUE(waitFor([&] { return value("opened").toBool(); }));
    EXPECT_GE(value("spare").toDouble(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(value("chosen").toString(), QStringLiteral("long"));
}

TEST_F(PiecesTest, SymbolsTakeTheirColorAndDoNotOutliveTheirName) {
    show("property alias name: icon.name; property alias tint: icon.color;"
         "Rectangle { anchors.fill: parent; color: 'white' }"
         "SymbolIcon { id: icon; name: 'checkmark.circle.fill'; size: 40; color: 'red' }");
    const auto pixel = [&] { return view.grabWindow().pixelColor(20, 4); };
    EXPECT_EQ(pixel(), QColor(Qt::red));
    view.rootObject()->setProperty("tint", QColor(Qt::blue));
    EXPECT_EQ(pixel(), QColor(Qt::blue));
    view.rootObject()->setProperty("name", QStringLiteral("no.such.symbol"));
    EXPECT_EQ(pixel(), QColor(Qt::white));
}

} // namespace
} // namespace zenlot
