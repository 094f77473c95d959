// The real QML, driven by keys and clicks.
#include "inventory_fixture.h"
#include "shell/mainwindow/content_view_model.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)

namespace zenlot {
namespace {

// The item below `root` that says this to people who hear the window; null when there is none.
QQuickItem* itemNamed(QQuickItem* root, const QString& name) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(root);
    if (interface && interface->text(QAccessible::Name) == name)
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = itemNamed(child, name))
            return found;
    }
    return nullptr;
}

class ContentViewTest : public testing::Test {
  protected:
    ContentViewTest() {
        fixture.tables.addListener(8080, 42, currentUserId(), "/opt/Sample.app/server");
        fixture.tables.addListener(22, 43, currentUserId() + 1, "/usr/sbin/<i>sshd\n\u202Ex");
        view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
        view.setInitialProperties({{QStringLiteral("viewModel"), QVariant::fromValue(&model)}});
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/MainWindow/ContentView.qml")));
        view.resize(720, 480);
        view.show();
    }

    QQuickItem* waitForItem(const QString& name) {
        QQuickItem* item = nullptr;
        return QTest::qWaitFor([&] { return (item = itemNamed(view.contentItem(), name)); }, 10'000)
                   ? item
                   : nullptr;
    }

    void click(const QQuickItem* item) {
        QTest::mouseClick(&view, Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    InventoryFixture fixture;
    NotificationCenter notifications;
    ContentViewModel model{fixture.inventory, notifications};
    QQuickView view;
};

TEST_F(ContentViewTest, TypedNumberFindsItsProcess) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    for (const char key : {'8', 'x', '0', '8', '0'})
        QTest::keyClick(&view, key);
    const QQuickItem* field = itemNamed(view.contentItem(), u"Port"_qs);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->property("text"), u"8080"_qs);
    EXPECT_NE(waitForItem(u"Sample TCP4 LISTEN PID 42"_qs), nullptr);
    EXPECT_NE(waitForItem(u"1 process on port 8080"_qs), nullptr);
}

TEST_F(ContentViewTest, ClickInTheSidebarChecksItsPort) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    const QQuickItem* row = waitForItem(u"22 <i>sshd\n\u202Ex TCP4"_qs);
    ASSERT_NE(row, nullptr);
    click(row);
    EXPECT_NE(waitForItem(u"<i>sshd\n\u202Ex TCP4 LISTEN PID 43"_qs), nullptr);
    EXPECT_EQ(model.portInput(), u"22"_qs);
}

} // namespace
} // namespace zenlot
