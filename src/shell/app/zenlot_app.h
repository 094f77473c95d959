// The application: builds every part once, in the order in which they need each other, and owns
// them until the end of the run.
//
//     ZenlotApp zenlot(sessionBus, instance);
//     zenlot.start(LaunchStyle::withWindow);
//
// The windows are made when they are opened, and so is the QML engine with the first of them: what
// sits in the status area costs little until somebody looks at it.
#pragma once

#include "inventory/linux/linux_origin_sources.h"
#include "inventory/linux/linux_port_services.h"
#include "inventory/linux/linux_process_inspector.h"
#include "inventory/linux/linux_process_pinner.h"
#include "inventory/linux/linux_process_signals.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/port_scanner.h"
#include "inventory/shared_port_cache.h"
#include "managers/linux/network_manager_networks.h"
#include "managers/linux/socket_container_engines.h"
#include "managers/linux/systemd_service_managers.h"
#include "monitoring/conflict_listener.h"
#include "monitoring/launch_agent_installer.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_data_cache.h"
#include "monitoring/port_inventory.h"
#include "monitoring/port_monitor.h"
#include "monitoring/port_notification_manager.h"
#include "platform/application_instance.h"
#include "platform/fallback_app_service.h"
#include "platform/home_directories.h"
#include "platform/linux/autostart_app_service.h"
#include "platform/linux/child_app_service.h"
#include "platform/linux/desktop_running_applications.h"
#include "platform/linux/freedesktop_user_notification_center.h"
#include "platform/linux/freedesktop_workspace.h"
#include "platform/linux/journal_system_log.h"
#include "platform/linux/json_user_defaults.h"
#include "platform/linux/pidfd_process_end_watch.h"
#include "platform/linux/portal_appearance.h"
#include "platform/linux/property_list_file_reader.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "platform/linux/statusarea/tray_status_bar.h"
#include "platform/linux/systemd_app_service.h"
#include "platform/linux/windowsystem/desktop_application_windows.h"
#include "platform/linux/windowsystem/x11_settings_appearance.h"
#include "platform/merged_appearance.h"
#include "settings/app_log.h"
#include "settings/app_settings.h"
#include "settings/window/settings_view_model.h"
#include "shell/app/appearance_follower.h"
#include "shell/app/login_item.h"
#include "shell/backgrounditems/background_items_view_model.h"
#include "shell/inspector/process_details_collector.h"
#include "shell/inspector/process_details_loader.h"
#include "shell/mainwindow/bundle_key_cache.h"
#include "shell/mainwindow/content_view_model.h"
#include "shell/menubar/app_delegate.h"
#include "shell/model/app_model.h"
#include "shell/style/qml_window.h"
#include "shell/updater/update_view_model.h"
#include "updates/https_release_feed.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QTimer>

#include <memory>

QT_FORWARD_DECLARE_CLASS(QQuickWindow)

namespace zenlot {

enum class LaunchStyle {
    withWindow,
    inBackground, // as a login item, which nobody has asked to see
};

class ZenlotApp final {
  public:
    // Needs a QApplication. The references must outlive the object.
    ZenlotApp(SessionBus& bus, ApplicationInstance& instance);
    ~ZenlotApp();

    // Once the settings have been read, however long that takes.
    QCoro::Task<> start(LaunchStyle style);

    // What must not be lost when the program ends. Of all else the end may be cut short.
    void finish();

    // Opens the main window, or brings it forward, which begins with the startup sequence.
    void openMainWindow();
    void openSettings();

    // The link that somebody opened: a port to look up, and to alert about when it is held.
    void openUrl(const QString& url);

    QQuickWindow* mainWindow() const { return mainWindow_.window(); }
    // Of the main window; null while that is closed.
    ContentViewModel* contentViewModel() { return contentViewModel_; }

  private:
    enum class RunningMonitor { leave, restart };

    void runStartupSequence();
    QCoro::Task<> finishStartupSequence();
    QCoro::Task<> refreshMonitorRegistration(RunningMonitor whenRunning);
    QCoro::Task<> alertAboutOwner(int port);
    void followSettings();
    void noteTroubleWithSettings();
    QCoro::Task<> readPortToCheck();
    void followInstance();
    void quitIfNothingIsLeft();

    void show(QmlWindow& window);
    void showOnboarding();
    QCoro::Task<> openLoginItems();
    void checkForUpdates();
    QQmlEngine& engine();
    void applyMotion();
    QVariantMap makeMainContent(QObject& owner);
    QVariantMap makeSettingsContent(QObject& owner);
    QVariantMap makeOnboardingContent(QObject& owner);

    SessionBus& bus_;
    ApplicationInstance& instance_;
    QObject context_; // of the observations

    HomeDirectories directories_;
    JsonUserDefaults userDefaults_;
    AutostartAppService autostart_;
    LoginItem loginItem_;
    AppSettings settings_;
    AppLog log_;
    JournalSystemLog systemLog_;
    PortalAppearance portalAppearance_;
    X11SettingsAppearance x11Appearance_;
    MergedAppearance appearance_;
    AppearanceFollower appearanceFollower_;
    DesktopRunningApplications runningApplications_;
    PropertyListFileReader propertyLists_;
    FreedesktopWorkspace workspace_;

    LinuxProcessTables processTables_;
    LinuxProcessPinner processPinner_;
    LinuxProcessInspector processInspector_;
    LinuxPortServices portServices_;
    LinuxOriginSources originSources_;
    SharedPortCache sharedPortCache_;
    PortScanner scanner_;
    SocketContainerEngines containerEngines_;
    NetworkManagerNetworks networks_;
    SystemdServiceManagers serviceManagers_;
    LinuxProcessSignals processSignals_;
    OriginCollector originCollector_;
    PortStopper portStopper_;
    PortInventory inventory_;
    PidfdProcessEndWatch processEnds_;

    NotificationCenter notifications_;
    SessionBusBroadcastCenter broadcasts_;
    FreedesktopUserNotificationCenter alerts_;
    SystemdAppService systemdMonitor_;
    ChildAppService childMonitor_;
    FallbackAppService monitorService_;
    LaunchAgentInstaller launchAgentInstaller_;
    WorkerThreads portReader_{1};
    PortDataCache portDataCache_;
    PortNotificationManager notificationManager_;
    ConflictListener conflictListener_;
    PortMonitor portMonitor_;
    bool didRefreshMonitorThisLaunch_{false};
    QTimer reinstallTimer_;

    AppModel appModel_;
    BundleKeyCache bundleKeys_;
    ApplicationCache applicationCache_;
    ProcessDetailsCollector detailsCollector_;
    ProcessDetailsLoader detailsLoader_;
    BackgroundItemsViewModel backgroundItems_;
    HttpsReleaseFeed releaseFeed_;
    UpdateViewModel updates_;
    QPointer<ContentViewModel> contentViewModel_;

    std::unique_ptr<QQmlEngine> engine_; // before what it shows, which must be gone first
    QmlWindow mainWindow_;
    QmlWindow settingsWindow_;
    QmlWindow onboardingWindow_;
    QmlWindow backgroundItemsWindow_;
    QmlWindow updateWindow_;

    DesktopApplicationWindows windows_;
    TrayStatusBar statusBar_;
    std::unique_ptr<GlobalShortcut> globalShortcut_;
    AppDelegate appDelegate_;
};

} // namespace zenlot
