// What the program does outside of its windows: the status item with its icon and menu, the global
// shortcut, and its place in the taskbar.
//
// The icon is notified while there is an active conflict. The menu is made anew at each change; one
// that is open stays as it is until it closes, and its commands then concern only the conflict that
// they name.
//
//     AppDelegate delegate({inventory, notifications, statusBar, shortcut, windows},
//                          {.openMainWindow = [&] { mainWindow.open(); }, .terminate = ...});
//     delegate.configure(settings, appModel);
//
// Everything here belongs to the main thread. No operation waits.
#pragma once

#include "platform/application_windows.h"
#include "platform/global_shortcut.h"
#include "platform/status_bar.h"
#include "shell/menubar/active_conflict.h"
#include "shell/menubar/open_windows.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace zenlot {

class AppModel;
class StatusMenu;

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
    };

    // What the program as a whole does. Each may be missing.
    struct Actions {
        std::function<void()> openMainWindow; // or brings it forward
        std::function<void()> openSettings;
        std::function<void()> checkForUpdates;
        std::function<void()> focusPortField; // of the main window, if that is open
        std::function<void()> terminate;
    };

    AppDelegate(const Collaborators& collaborators, Actions actions, QObject* parent = nullptr);
    ~AppDelegate() override;

    // Begins to serve these; neither is kept alive. May be repeated.
    void configure(AppSettings& settings, AppModel& appModel);

    // Follow showInMenuBar, globalShortcutEnabled and showInDock. A program that is not in the dock
    // is so all the same as long as there is no status area.
    void updateStatusItem(const AppSettings& settings);
    void updateGlobalShortcut(const AppSettings& settings);
    void applyActivationPolicy(const AppSettings& settings);

    // The program was started again while it runs: shows what is open, or the main window.
    void applicationShouldHandleReopen();

    ActiveConflict& conflict() { return conflict_; }

    // The menu that opens at a click. Made when it is first asked for after a change.
    StatusMenu& menu();

  private:
    void updateStatusIcon();
    void installMenu();
    QList<StatusMenuEntry> buildMenu();
    void appendConflict(QList<StatusMenuEntry>& entries, const Conflict& conflict);
    void openMenu(std::optional<QRect> place);
    void retireMenu();

    void portSearchCommitted(StatusMenu& menu);
    void showMainWindow();
    void searchInMainWindow();
    void openSettings();

    Collaborators with_;
    Actions actions_;
    QPointer<AppModel> appModel_;
    QPointer<AppSettings> settings_;

    OpenWindows windows_;
    ActiveConflict conflict_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<StatusMenu> menu_;
    std::unique_ptr<GlobalShortcut::Monitor> eventMonitor_;
};

} // namespace zenlot
