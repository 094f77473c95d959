// The application: builds every part once, in the order in which they need each other, and owns
// them until the end of the run.
#pragma once

#include "inventory/linux/linux_process_inspector.h"
#include "inventory/linux/linux_process_pinner.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/port_lookup.h"
#include "inventory/port_scanner.h"
#include "inventory/shared_port_cache.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_data_cache.h"
#include "monitoring/port_inventory.h"
#include "platform/home_directories.h"
#include "platform/linux/autostart_app_service.h"
#include "platform/linux/desktop_running_applications.h"
#include "platform/linux/freedesktop_workspace.h"
#include "platform/linux/json_user_defaults.h"
#include "platform/linux/libplist_property_list_reader.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "settings/app_settings.h"
#include "shell/inspector/process_detail_view_model.h"
#include "shell/mainwindow/bundle_key_cache.h"
#include "shell/mainwindow/content_view_model.h"
#include "shell/model/app_model.h"

#include <QQmlApplicationEngine>

QT_FORWARD_DECLARE_CLASS(QQuickWindow)

namespace zenlot {

class ZenlotApp final {
  public:
    // Needs a QGuiApplication.
    ZenlotApp();

    // Opens the main window and starts following the background monitor. False when the window
    // can't be made; what is wrong is in the log.
    bool start();

    QQuickWindow* mainWindow() const;
    ContentViewModel& contentViewModel() { return contentViewModel_; }

  private:
    HomeDirectories directories_;
    JsonUserDefaults userDefaults_;
    AutostartAppService loginItem_;
    AppSettings settings_;
    DesktopRunningApplications runningApplications_;
    FreedesktopWorkspace workspace_;
    LibplistPropertyListReader propertyLists_;

    LinuxProcessTables processTables_;
    LinuxProcessPinner processPinner_;
    LinuxProcessInspector processInspector_;
    SharedPortCache sharedPortCache_;
    PortScanner scanner_;
    PortLookup lookup_;
    PortInventory inventory_;

    NotificationCenter notifications_;
    SessionBusBroadcastCenter broadcasts_;
    PortDataCache portDataCache_;

    AppModel appModel_;
    BundleKeyCache bundleKeys_;
    ContentViewModel contentViewModel_;
    ProcessDetailsCollector detailsCollector_;
    ProcessDetailsLoader detailsLoader_;
    ProcessDetailViewModel detailViewModel_;
    QQmlApplicationEngine engine_; // the last member: what it shows must outlive it
};

} // namespace zenlot
