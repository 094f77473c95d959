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
#include "shell/menubar/status_menu.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QWindow)

namespace zenlot {

class AppModel;

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

    // Everything that the user can have done from outside of the windows: what an active conflict
    // offers first, then the standing commands. The surfaces draw from this list.
    QList<Command> commands();
    // False when there is no such command.
    bool run(const QString& identifier);

    // The menu that opens at a click. Made when it is first asked for after a change.
    StatusMenu& menu();

    // Whether a window has to show the way to the commands: there is no status item, or the panel
    // lets none of its menus open.
    bool needsWindowMenu() const;
    // The commands in a menu of that window, beside what was clicked there.
    void openWindowMenu(QWindow& window, const QRect& place);

  Q_SIGNALS:
    void windowMenuNeedChanged();

  private:
    void updateStatusIcon();
    void installMenu();
    QList<Command> commandsWithout(const QStringList& identifiers);
    void appendConflict(QList<Command>& entries, const Conflict& conflict);
    void openMenu(std::optional<QRect> place);
    void leadToWindowMenu();
    StatusMenu::Edges edges() const;
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
    std::unique_ptr<StatusMenu> windowMenu_;
    bool isMenuOutOfReach_{false};
    std::unique_ptr<GlobalShortcut::Monitor> eventMonitor_;
};

} // namespace zenlot
