// The real window, driven by keys and clicks.
#include "platform/fake_app_service.h"
#include "shell/backgrounditems/background_items_view_model.h"
#include "shell/style/qml_window.h"
#include "support/window_driver.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_BackgroundItemsPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kCommand = u"systemctl --user unmask sample.service"_s;

class BackgroundItemsWindowTest : public testing::Test, protected WindowDriver {
  protected:
    BackgroundItemsWindowTest() {
        service.currentStatus = AppServiceStatus::requiresApproval;
        viewModel.refresh();
        EXPECT_TRUE(comesTo(u"Blocked"_s));
        engine.addImportPath(u":/qt/qml"_s);
        page.open()->show();
        window()->requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window()));
    }
    QQuickWindow* window() override { return page.window(); }
    bool comesTo(const QString& statusText) {
        return waitFor([&] { return viewModel.statusText() == statusText; });
    }

    FakeAppService service;
    BackgroundItemsViewModel viewModel{service, [] { return kCommand; }, u"sample.service"_s};
    QQmlEngine engine;
    QmlWindow page{[this]() -> QQmlEngine& { return engine; },
                   "BackgroundItems/BackgroundItemsWindow.qml", QmlWindow::showing(viewModel)};
};

TEST_F(BackgroundItemsWindowTest, OffersWhatHelpsAndFollows) {
    EXPECT_EQ(tabTo(u"Re-check"_s), (QStringList{u"Done"_s, u"Copy"_s, kCommand, u"Re-check"_s}));
    press(Qt::Key_Space);
    EXPECT_TRUE(comesTo(u"Still blocked"_s));
    click(itemNamed(u"Copy"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), kCommand);

    const int heightWithCommand = window()->height();
    service.currentStatus = AppServiceStatus::notRegistered;
    viewModel.refresh(); // as when somebody comes back from the terminal
    EXPECT_TRUE(waitFor([&] { return window()->height() < heightWithCommand; }));
    service.refusal = AppServiceError{u"d"_s, 1, u"<b>No</b>"_s};
    tabTo(u"Turn On"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitFor([&] { return viewModel.problem() == u"<b>No</b>"_s; }));
    service.refusal.reset();
    press(Qt::Key_Return);
    EXPECT_TRUE(comesTo(u"Allowed"_s));
    press(Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

} // namespace
} // namespace zenlot
