// What the program does outside of its windows: the status item with its icon and menu, the global
// shortcut, the conflict that the icon announces, bringing windows forward, and the window that
// welcomes new users.
//
// The icon is notified while there is an active conflict, which begins with "conflict detected" and
// ends with a matching "conflict handled" or by the commands of the menu, which tell so themselves.
// The menu is made anew at each change; one that is open stays as it is until it closes, and its
// commands then concern only the conflict that they name.
//
//     AppDelegate delegate({inventory, notifications, statusBar, shortcut, windows, updater},
//                          {.makeOnboardingWindow = ..., .focusPortField = ..., .terminate = ...});
//     delegate.setOpenMainWindow([&] { mainWindow.open(); });
//     delegate.configure(settings, appModel);
//
// Everything here belongs to the main thread. No operation waits.
#pragma once

#include "inventory/menu_bar_conflict.h"
#include "platform/application_windows.h"
#include "platform/global_shortcut.h"
#include "platform/status_bar.h"
#include "platform/user_info.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QWindow)

namespace zenlot {

class AppModel;
class AppSettings;
class Command;
class NotificationCenter;
class PortInventory;
class StatusMenu;
class Updater;

class AppDelegate final : public QObject {
    Q_OBJECT

  public:
    // They must outlive the delegate.
    struct Collaborators {
        PortInventory& inventory;
        NotificationCenter& notifications;
        StatusBar& statusBar;
        GlobalShortcut& globalShortcut;
        ApplicationWindows& windows;
        Updater& updater;
    };

    // What the program as a whole does. Each may be missing.
    struct Actions {
        std::function<std::unique_ptr<QWindow>(AppSettings&)> makeOnboardingWindow;
        std::function<void()> focusPortField; // of the main window, if that is open
        std::function<void()> terminate;
    };

    AppDelegate(const Collaborators& collaborators, Actions actions, QObject* parent = nullptr);
    ~AppDelegate() override;

    // The only means of opening those windows. They replace earlier ones.
    void setOpenMainWindow(std::function<void()> open) { openMainWindow_ = std::move(open); }
    void setOpenSettingsAction(std::function<void()> open) {
        openSettingsAction_ = std::move(open);
    }

    // Begins to serve these; neither is kept alive. May be repeated.
    void configure(AppSettings& settings, AppModel& appModel);

    // Follow showInMenuBar, globalShortcutEnabled and showInDock. A program that is not in the dock
    // is so all the same as long as there is no status area.
    void updateStatusItem(const AppSettings& settings);
    void updateGlobalShortcut(const AppSettings& settings);
    void applyActivationPolicy(const AppSettings& settings);

    // Brings the first open window that can have the keyboard forward, or else the first that is
    // open. False when none is.
    bool focusExistingWindow();

    // The program was started again while it runs: shows what is open, or the main window.
    void applicationShouldHandleReopen();

    void showOnboardingWindow(AppSettings& settings);
    void closeOnboardingWindow();

    std::optional<MenuBarConflict> activeConflict() const { return activeConflict_; }

    // There once, for whatever shows them.
    Command& openCommand() { return *openCommand_; }
    Command& settingsCommand() { return *settingsCommand_; }
    Command& updatesCommand() { return *updatesCommand_; }
    Command& quitCommand() { return *quitCommand_; }

    // The menu that opens at a click. Made when it is first asked for after a change.
    StatusMenu& menu();

    // The actions of the menu. Windows open in the next turn of the event loop, when the menu has
    // closed. A field without a valid port is left as it is.
    void portSearchCommitted(StatusMenu& menu);
    void openApp();
    void openSettingsItem();
    void checkForUpdates();
    void quitApp() const;
    void killConflictingProcess();
    void ignoreConflictingPort();
    void ignoreConflictingProcess();
    void clearConflictIndicator();

  private:
    void installObservers();
    void handleConflictDetected(const UserInfo& info);
    void handleConflictHandled(const UserInfo& info);
    void setActiveConflict(std::optional<MenuBarConflict> conflict);
    void clearActiveConflict();
    void finishActiveConflict();

    void updateStatusIcon();
    void installMenu();
    QList<StatusMenuEntry> buildMenu();
    void appendConflict(QList<StatusMenuEntry>& entries);
    void openMenu(std::optional<QRect> place);
    void retireMenu();

    bool handlePortSearch(const QString& text);
    void showSettings();
    void showSomeWindow();
    void searchInMainWindow();
    void activate();
    void bringAppToFront();
    QWindow* windowNamed(const QString& name) const;

    Collaborators with_;
    Actions actions_;
    std::function<void()> openMainWindow_;
    std::function<void()> openSettingsAction_;
    QPointer<AppModel> appModel_;
    QPointer<AppSettings> settings_;

    std::unique_ptr<Command> openCommand_;
    std::unique_ptr<Command> settingsCommand_;
    std::unique_ptr<Command> updatesCommand_;
    std::unique_ptr<Command> quitCommand_;

    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<StatusMenu> menu_;
    std::unique_ptr<GlobalShortcut::Monitor> eventMonitor_;
    bool hasObservers_{false};
    std::optional<MenuBarConflict> activeConflict_;
    std::unique_ptr<QWindow> onboardingWindow_;
};

} // namespace zenlot
