#include "picture_tour/sample_machine.h"
#include "picture_tour/tour.h"
#include "platform/fake_application_windows.h"
#include "platform/fake_global_shortcut.h"
#include "platform/fake_status_bar.h"
#include "settings/window/settings_view_model.h"
#include "shell/backgrounditems/background_items_view_model.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "shell/menubar/app_delegate.h"
#include "shell/onboarding/onboarding_view_model.h"
#include "shell/style/qml_window.h"
#include "shell/updater/update_view_model.h"
#include "support/sample_user.h"
#include "updates/fake_release_feed.h"

#include <QApplication>
#include <QFile>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QWidget>
#include <QWindow>
#include <QtQml/qqmlextensionplugin.h>

#include <memory>
#include <stdexcept>

Q_IMPORT_QML_PLUGIN(Zenlot_BackgroundItemsPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_LogViewerPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_OnboardingPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_SettingsWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_UpdaterPlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kUnit = u"dev.quorvane.zenlot.monitor.service"_s;
const AppServiceError kRefusal{u"org.freedesktop.systemd1.NoSuchUnit"_s, 0,
                               u"Unit %1 not found."_s.arg(kUnit)};

// A window of the program, opened over what the function makes for it.
class TourWindow {
  public:
    TourWindow(QQmlEngine& engine, const char* file, QmlWindow::Properties properties)
        : window_([&engine]() -> QQmlEngine& { return engine; }, file, std::move(properties)) {
        if (!window_.open())
            throw std::runtime_error(std::string("can't make ") + file);
        window_.window()->show();
        window_.window()->requestActivate();
        waitFor([&] { return window_.window()->isActive(); });
    }

    QQuickWindow& operator*() const { return *window_.window(); }
    QQuickWindow* operator->() const { return window_.window(); }

  private:
    QmlWindow window_;
};

void openTab(QQuickWindow& window, int tab) {
    for (QQuickItem* item : window.findChildren<QQuickItem*>()) {
        if (item->property("selectedTab").isValid())
            item->setProperty("selectedTab", tab);
    }
}

void showSettings(QQmlEngine& engine, Visitor& visitor) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"zenlot-monitor.log"_s));
    if (!file.open(QFile::WriteOnly))
        throw std::runtime_error("can't write the log");
    file.write("2026-03-05T09:07:31Z [zenlot-daemon] daemon started\n"
               "2026-03-05T09:12:02Z [zenlot-daemon] CONFLICT port 3000 blocked by node (pid 42)\n"
               "2026-03-05T09:12:03Z [zenlot-app] notification add failed: no server\n");
    file.close();

    SampleUser user;
    user.settings.setMonitorIgnoredPorts({22, 8080});
    user.settings.setMonitorIgnoredApps(
        {u"Google Chrome"_s, u"node"_s, u"python3"_s, u"ruby"_s, u"sshd"_s, u"steam"_s, u"42"_s});
    user.settings.setConflictIgnoredApps({u"node"_s});
    AppLog log(file.fileName());
    const TourWindow window(engine, "App/SettingsWindow.qml", [&](QObject& owner) -> QVariantMap {
        return {{u"viewModel"_s, QVariant::fromValue(new SettingsViewModel(
                                     user.settings, user.installer, user.openLoginItems, &owner))},
                {u"logViewModel"_s,
                 QVariant::fromValue(new LogTabViewModel(file.fileName(), log, &owner))}};
    });
    visitor.see(*window, u"settings-general"_s);
    press(*window, Qt::Key_Right);
    user.settle();
    visitor.see(*window, u"settings-off"_s);
    auto* viewModel = window->property("viewModel").value<SettingsViewModel*>();
    user.monitor.refusal = kRefusal;
    viewModel->setConflictMonitoring(true);
    user.settle();
    visitor.see(*window, u"settings-failed"_s);
    user.monitor.refusal.reset();
    user.forbidTheMonitor();
    viewModel->setConflictMonitoring(true);
    user.settle();
    visitor.see(*window, u"settings-blocked"_s);
    viewModel->recheckBackgroundApproval();
    user.settle();
    visitor.see(*window, u"settings-still-blocked"_s);
    user.monitor.currentStatus = AppServiceStatus::enabled;
    viewModel->recheckBackgroundApproval();
    user.settle();
    user.settings.setPortMonitoringEnabled(true);
    visitor.see(*window, u"settings-exceptions"_s);
    for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down})
        press(*window, key);
    visitor.see(*window, u"settings-selected"_s);
    press(*window, Qt::Key_Tab);
    press(*window, Qt::Key_Return);
    visitor.see(*window, u"settings-adding"_s);
    press(*window, Qt::Key_Escape);
    openTab(*window, 2);
    visitor.see(*window, u"settings-log"_s);
    QFile::remove(file.fileName());
    openTab(*window, 0);
    openTab(*window, 2);
    visitor.see(*window, u"settings-no-log"_s);
    window->hide();
}

void showOnboarding(QQmlEngine& engine, Visitor& visitor) {
    SampleUser user;
    const auto at = [](SampleUser& somebody) {
        return OnboardingViewModel::Collaborators{somebody.settings, somebody.installer,
                                                  somebody.systemLog};
    };
    OnboardingViewModel viewModel(at(user), {.openLoginItems = user.openLoginItems});
    const TourWindow window(engine, "Onboarding/OnboardingWindow.qml",
                            QmlWindow::showing(viewModel));
    window->setProperty("movie", QUrl()); // which would never stand still
    user.settle();
    visitor.see(*window, u"onboarding-welcome"_s);
    viewModel.advance();
    visitor.see(*window, u"onboarding-monitor"_s);
    user.monitor.refusal = kRefusal;
    viewModel.enableBackgroundMonitor();
    user.settle();
    visitor.see(*window, u"onboarding-failed"_s);
    user.monitor.refusal.reset();
    user.forbidTheMonitor();
    viewModel.enableBackgroundMonitor();
    user.settle();
    visitor.see(*window, u"onboarding-blocked"_s);
    viewModel.recheckApproval();
    user.settle();
    visitor.see(*window, u"onboarding-still-blocked"_s);
    SampleUser returning;
    returning.monitor.currentStatus = AppServiceStatus::enabled;
    OnboardingViewModel again(at(returning), {});
    const TourWindow other(engine, "Onboarding/OnboardingWindow.qml", QmlWindow::showing(again));
    other->setProperty("movie", QUrl());
    returning.settle();
    again.advance();
    visitor.see(*other, u"onboarding-enabled"_s);
}

void showBackgroundItems(QQmlEngine& engine, Visitor& visitor) {
    SampleUser user;
    BackgroundItemsViewModel viewModel(
        user.monitor, [] { return u"systemctl --user unmask "_s + kUnit; }, kUnit);
    const TourWindow page(engine, "BackgroundItems/BackgroundItemsWindow.qml",
                          QmlWindow::showing(viewModel));
    for (const auto& [status, state] :
         {std::pair(AppServiceStatus::requiresApproval, "background-blocked"),
          {AppServiceStatus::notRegistered, "background-off"},
          {AppServiceStatus::notFound, "background-not-found"},
          {AppServiceStatus::enabled, "background-allowed"}}) {
        user.monitor.currentStatus = status;
        const QString before = viewModel.statusText();
        viewModel.recheck();
        waitFor([&] { return viewModel.statusText() != before; });
        visitor.see(*page, QString::fromLatin1(state));
    }
}

void showUpdates(QQmlEngine& engine, Visitor& visitor) {
    const auto release = [](const char* version) {
        return Release{*ReleaseVersion::fromText(QLatin1String(version)),
                       QUrl(u"https://zenlot.example/releases/2.0"_s), QDate(2026, 3, 5)};
    };
    const std::pair<ReleaseAnswer, const char*> answers[] = {
        {release("2.0"), "update-newer"},
        {release("1.9"), "update-current"},
        {ReleaseFeedFailure::noFeed, "update-no-feed"},
        {ReleaseFeedFailure::unreachable, "update-unreachable"},
    };
    for (const auto& [answer, state] : answers) {
        FakeReleaseFeed feed;
        UpdateViewModel viewModel(feed, release("1.9").version, [](const QUrl&) { return false; });
        viewModel.check();
        const TourWindow window(engine, "Updater/UpdateWindow.qml", QmlWindow::showing(viewModel));
        feed.answer(answer);
        waitFor([&] { return viewModel.state() != UpdateViewModel::State::Checking; });
        visitor.see(*window, QString::fromLatin1(state));
    }
}

} // namespace

void showOtherWindows(Visitor& visitor) {
    QQmlEngine engine;
    engine.addImportPath(u":/qt/qml"_s);
    showSettings(engine, visitor);
    showOnboarding(engine, visitor);
    showBackgroundItems(engine, visitor);
    showUpdates(engine, visitor);
}

void showStatusMenu(Visitor& visitor) {
    SampleMachine machine;
    SampleUser user;
    NotificationCenter notifications;
    FakeStatusBar bar;
    FakeGlobalShortcut shortcut;
    FakeApplicationWindows windows;
    AppModel appModel;
    AppDelegate delegate({machine.inventory(), notifications, bar, shortcut, windows}, {});
    delegate.configure(user.settings, appModel);
    Q_EMIT notifications.conflictDetected({3000, {42}, u"node"_s, u"Node"_s});
    bar.click(QRect(10, 0, 20, 20));
    QWidget* menu = nullptr;
    waitFor([&] { return (menu = QApplication::activePopupWidget()) != nullptr; });
    visitor.see(*menu, u"status-menu"_s);
    menu->close();
    QWindow window;
    delegate.openWindowMenu(window, QRect(10, 0, 20, 20));
    waitFor([&] { return (menu = QApplication::activePopupWidget()) != nullptr; });
    visitor.see(*menu, u"window-menu"_s);
    menu->close();
}

} // namespace zenlot
