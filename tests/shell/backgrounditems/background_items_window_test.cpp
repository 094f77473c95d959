// The real window, driven by keys and clicks.
#include "platform/fake_app_service.h"
#include "shell/backgrounditems/background_items_window.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Zenlot_BackgroundItemsPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kCommand = u"systemctl --user unmask sample.service"_s;

class BackgroundItemsWindowTest : public testing::Test {
  protected:
    void open(AppServiceStatus status) {
        service.currentStatus = status;
        page.openSystemSettingsLoginItems();
        ASSERT_TRUE(QTest::qWaitForWindowActive(page.window()));
    }

    // What a screen reader says of each item that Tab comes to, up to the wanted one.
    QStringList tabTo(const QString& name) {
        QStringList names;
        do {
            QTest::keyClick(page.window(), Qt::Key_Tab);
            QQuickItem* item = page.window()->activeFocusItem();
            names.append(QAccessible::queryAccessibleInterface(item)->text(QAccessible::Name));
        } while (names.last() != name && names.size() < 10);
        return names;
    }

    FakeAppService service;
    BackgroundItemsViewModel viewModel{service, [] { return kCommand; }, u"sample.service"_s};
    QQmlEngine engine;
    BackgroundItemsWindow page{[this]() -> QQmlEngine& { return engine; }, viewModel};
};

TEST_F(BackgroundItemsWindowTest, OffersWhatHelpsAndFollows) {
    engine.addImportPath(u":/qt/qml"_s);
    open(AppServiceStatus::requiresApproval);
    EXPECT_EQ(tabTo(u"Re-check"_s), (QStringList{u"Done"_s, u"Copy"_s, kCommand, u"Re-check"_s}));
    QTest::keyClick(page.window(), Qt::Key_Space);
    EXPECT_EQ(viewModel.statusText(), u"Still blocked"_s);
    tabTo(u"Copy"_s);
    const QQuickItem* copy = page.window()->activeFocusItem();
    QTest::mouseClick(page.window(), Qt::LeftButton, {},
                      copy->mapToScene(copy->boundingRect().center()).toPoint());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), kCommand);

    const int heightWithCommand = page.window()->height();
    open(AppServiceStatus::notRegistered);
    EXPECT_TRUE(QTest::qWaitFor([&] { return page.window()->height() < heightWithCommand; }));
    service.refusal = AppServiceError{u"d"_s, 1, u"<b>No</b>"_s};
    tabTo(u"Turn On"_s);
    QTest::keyClick(page.window(), Qt::Key_Return);
    EXPECT_EQ(viewModel.problem(), u"<b>No</b>"_s);
    service.refusal.reset();
    QTest::keyClick(page.window(), Qt::Key_Return);
    EXPECT_EQ(viewModel.statusText(), u"Allowed"_s);
    QTest::keyClick(page.window(), Qt::Key_Escape);
    EXPECT_FALSE(page.window()->isVisible());
}

} // namespace
} // namespace zenlot
