// The shared pieces in a window, worked with the keyboard and the mouse.
#include "support/window_driver.h"

#include <QQmlComponent>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class PiecesTest : public ViewTest {
  protected:
    PiecesTest() { view.engine()->addImportPath(u":/qt/qml"_s); }

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

TEST_F(PiecesTest, DialogIsAnsweredWithTheKeyboard) {
    show("property string answer; property alias opened: dialog.opened;"
         "property alias back: opener.activeFocus; property alias tall: dialog.height;"
         "GlassButton { id: opener; focus: true; text: 'Ask'; onClicked: dialog.open() }"
         "ConfirmDialog { id: dialog; title: 'Sure?'; message: '<b>x</b> '.repeat(2000);"
         "    destructiveText: 'Force Quit ' + 'name '.repeat(800);"
         "    onAccepted: root.answer = 'accepted'; onRejected: root.answer = 'rejected' }");
    const std::pair<std::vector<Qt::Key>, const char*> answers[]{
        {{Qt::Key_Escape}, "rejected"},
        {{Qt::Key_Up, Qt::Key_Space}, "accepted"},
        {{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, "rejected"}}; // Tab stays inside
    for (const auto& [keys, answer] : answers) {
        view.rootObject()->setProperty("answer", QString());
        press(Qt::Key_Return);
        ASSERT_TRUE(waitFor([&] { return value("opened").toBool(); }));
        EXPECT_LT(value("tall").toDouble(), 400);
        for (const Qt::Key key : keys)
            press(key);
        EXPECT_EQ(value("answer").toString(), QLatin1String(answer));
        EXPECT_TRUE(waitFor([&] { return value("back").toBool(); }));
    }
}

TEST_F(PiecesTest, SymbolsTakeTheirColorAndDoNotOutliveTheirName) {
    show("property alias name: icon.name; property alias tint: icon.color;"
         "Rectangle { anchors.fill: parent; color: 'white' }"
         "SymbolIcon { id: icon; name: 'checkmark.circle.fill'; size: 40; color: 'red' }");
    const auto pixel = [&] { return view.grabWindow().pixelColor(20, 4); };
    EXPECT_EQ(pixel(), QColor(Qt::red));
    view.rootObject()->setProperty("tint", QColor(Qt::blue));
    EXPECT_EQ(pixel(), QColor(Qt::blue));
    view.rootObject()->setProperty("name", u"no.such.symbol"_s);
    EXPECT_EQ(pixel(), QColor(Qt::white));
}

} // namespace
} // namespace zenlot
