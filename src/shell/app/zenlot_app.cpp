#include "shell/app/zenlot_app.h"

#include "inventory/linux/processors.h"
#include "monitoring/broadcast_names.h"
#include "monitoring/published_ports.h"
#include "platform/linux/windowsystem/activation_acceptance.h"
#include "platform/linux/windowsystem/portal_global_shortcut.h"
#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/x11_global_shortcut.h"
#include "platform/linux/xdg_data_directories.h"
#include "platform/linux/xdg_home_directories.h"
#include "shell/app/window_commands.h"
#include "shell/inspector/process_detail_view_model.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "shell/model/port_url.h"
#include "shell/onboarding/onboarding_view_model.h"
#include "shell/processicon/process_icon_provider.h"
#include "shell/style/theme.h"
#include "updates/release_feed_address.h"

#include <QCoroFuture>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>
#include <QScreen>
#include <QtQml/qqmlextensionplugin.h>

#include <chrono>

Q_IMPORT_QML_PLUGIN(Zenlot_AppPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_BackgroundItemsPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_InspectorPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_LogViewerPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_MainWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_OnboardingPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_ProcessIconPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_SettingsWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_UpdaterPlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString kMonitorUnit = u"dev.quorvane.zenlot.monitor.service"_s;

// Long enough for the monitor to be gone before it is started anew.
constexpr auto kPauseBeforeReinstall = 500ms;

QStringList programDirectories() {
    return QString::fromLocal8Bit(qgetenv("PATH")).split(u':', Qt::SkipEmptyParts);
}

// Desktops start their portal for whoever asks; elsewhere nobody waits for one that fails to start.
PortalAppearance::Start startOfPortal() {
    return qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP") ? PortalAppearance::Start::never
                                                              : PortalAppearance::Start::asNeeded;
}

// The first of these places, from the folder of the application on, where there is such a file:
// those of an installation, and that of a tree in which it was built.
QString firstFile(const QStringList& places) {
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const QString& place : places) {
        const QFileInfo file(folder, place);
        if (file.isFile())
            return file.canonicalFilePath();
    }
    return {};
}

QString monitorProgram() {
    return firstFile({u"zenlot-monitor"_s, u"../../background_monitor/zenlot-monitor"_s});
}

QString monitorUnitFile() {
    return firstFile({u"../lib/systemd/user/"_s + kMonitorUnit,
                      u"../share/systemd/user/"_s + kMonitorUnit,
                      u"../../background_monitor/"_s + kMonitorUnit});
}

// Not from the theme of icons, which would draw a scalable picture in every size at once.
QIcon windowIcon() {
    QIcon icon;
    for (const int size : {48, 128})
        icon.addFile(u":/qt/qml/Zenlot/App/images/%1.png"_s.arg(size), {size, size});
    return icon;
}

std::unique_ptr<GlobalShortcut> makeGlobalShortcut(SessionBus& bus) {
    if (auto* const connection = x11Connection())
        return std::make_unique<X11GlobalShortcut>(*connection);
    return std::make_unique<PortalGlobalShortcut>(bus);
}

} // namespace

ZenlotApp::ZenlotApp(SessionBus& bus, ApplicationInstance& instance)
    : bus_(bus), instance_(instance), directories_(xdgHomeDirectories()),
      userDefaults_(directories_.configHome + u"/dev.quorvane.zenlot/defaults.json"_s),
      autostart_(directories_.configHome, QCoreApplication::applicationFilePath(),
                 kBackgroundOption.latin1()),
      loginItem_(autostart_), settings_(userDefaults_, loginItem_),
      log_(monitorLogPath(directories_.home)), systemLog_("zenlot"),
      portalAppearance_(bus_, startOfPortal()), appearance_(portalAppearance_, x11Appearance_),
      appearanceFollower_(appearance_),
      runningApplications_(xdgDataDirectories(directories_), programDirectories()),
      workspace_(directories_.home, xdgDataDirectories(directories_), propertyLists_),
      sharedPortCache_([container = SharedContainer(directories_.stateHome)] {
          return isPortListMinded(container);
      }),
      scanner_(processTables_, isPortInUse, availableProcessors()),
      originCollector_(originSources_, &containerEngines_, &networks_),
      portStopper_(
          {originSources_, originCollector_, processSignals_, serviceManagers_, containerEngines_}),
      inventory_(scanner_, sharedPortCache_, processPinner_, &portServices_, &originCollector_),
      broadcasts_(bus_, kMonitorBusName), alerts_(bus_),
      systemdMonitor_(bus_, kMonitorUnit, monitorUnitFile()),
      childMonitor_(monitorProgram(), {u"--wait"_s}),
      monitorService_(systemdMonitor_, childMonitor_,
                      [this] { return systemdMonitor_.hasManager(); }),
      launchAgentInstaller_(monitorService_, systemLog_, QCoreApplication::applicationDirPath()),
      portDataCache_(SharedContainer(directories_.stateHome), sharedPortCache_, broadcasts_,
                     notifications_, portReader_),
      notificationManager_(alerts_, inventory_, processEnds_, notifications_, log_),
      conflictListener_({SharedContainer(directories_.stateHome), inventory_, notificationManager_,
                         notifications_, broadcasts_, log_, monitorLogPath(directories_.home)}),
      portMonitor_(inventory_, notificationManager_, log_), bundleKeys_(propertyLists_),
      applicationCache_(runningApplications_), detailsCollector_(processInspector_),
      detailsLoader_(detailsCollector_, runningApplications_, propertyLists_, &originCollector_),
      backgroundItems_(
          monitorService_, [this] { return systemdMonitor_.unmaskCommand(); }, kMonitorUnit),
      releaseFeed_(releaseFeedAddress()),
      updates_(releaseFeed_,
               ReleaseVersion::fromText(QStringLiteral(ZENLOT_VERSION)).value_or(ReleaseVersion()),
               [](const QUrl& page) { return QDesktopServices::openUrl(page); }),
      mainWindow_([this]() -> QQmlEngine& { return engine(); }, "App/MainWindow.qml",
                  [this](QObject& owner) { return makeMainContent(owner); }),
      settingsWindow_([this]() -> QQmlEngine& { return engine(); }, "App/SettingsWindow.qml",
                      [this](QObject& owner) { return makeSettingsContent(owner); }),
      onboardingWindow_([this]() -> QQmlEngine& { return engine(); },
                        "Onboarding/OnboardingWindow.qml",
                        [this](QObject& owner) { return makeOnboardingContent(owner); }),
      backgroundItemsWindow_([this]() -> QQmlEngine& { return engine(); },
                             "BackgroundItems/BackgroundItemsWindow.qml",
                             QmlWindow::showing(backgroundItems_)),
      updateWindow_([this]() -> QQmlEngine& { return engine(); }, "Updater/UpdateWindow.qml",
                    QmlWindow::showing(updates_)),
      statusBar_(bus_), globalShortcut_(makeGlobalShortcut(bus_)),
      appDelegate_({inventory_, notifications_, statusBar_, *globalShortcut_, windows_},
                   {.openMainWindow = [this] { openMainWindow(); },
                    .openSettings = [this] { openSettings(); },
                    .checkForUpdates = [this] { checkForUpdates(); },
                    .focusPortField =
                        [this] {
                            if (contentViewModel_)
                                contentViewModel_->focusPortField();
                        },
                    .terminate = &QCoreApplication::quit}) {}

ZenlotApp::~ZenlotApp() {
    finish();
    userDefaults_.settle();
}

// Who quits at once has not given up the monitor.
void ZenlotApp::finish() {
    reinstallTimer_.stop();
    launchAgentInstaller_.finishRefresh();
    launchAgentInstaller_.wait();
}

QCoro::Task<> ZenlotApp::start(LaunchStyle style) {
    // Without a window there may still be a status item, alerts, or a later start to open one.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    log_.makeFolder();
    const QPointer<QObject> context(&context_);
    const QFuture<void> reading = userDefaults_.read();
    const QFuture<void> look = loginItem_.look();
    co_await reading;
    if (!context)
        co_return;
    co_await look;
    if (!context)
        co_return;
    settings_.load();
    followSettings();
    reinstallTimer_.setSingleShot(true);
    QObject::connect(&reinstallTimer_, &QTimer::timeout, &context_,
                     [this] { launchAgentInstaller_.finishRefresh(); });
    for (const QmlWindow* window : {&mainWindow_, &settingsWindow_, &onboardingWindow_,
                                    &backgroundItemsWindow_, &updateWindow_})
        QObject::connect(window, &QmlWindow::closed, &context_, [this] { quitIfNothingIsLeft(); });
    if (style == LaunchStyle::withWindow)
        openMainWindow();
    else
        runStartupSequence();
    followInstance();
}

// With its last window closed, a program without a status item and without anything to watch has
// nothing left to do.
void ZenlotApp::quitIfNothingIsLeft() {
    const bool hasStatusItem = settings_.showInMenuBar() && statusBar_.isAvailable();
    const bool isWatching =
        settings_.portMonitoringEnabled() || settings_.conflictMonitoringEnabled();
    if (!hasStatusItem && !isWatching && windows_.windows().isEmpty())
        QCoreApplication::quit();
}

void ZenlotApp::openMainWindow() {
    if (!mainWindow_.window())
        runStartupSequence();
    show(mainWindow_);
    readPortToCheck();
}

// Which another program may have written since the settings were read.
QCoro::Task<> ZenlotApp::readPortToCheck() {
    const QPointer<QObject> context(&context_);
    const QFuture<void> reading = userDefaults_.read();
    co_await reading;
    if (context && contentViewModel_)
        contentViewModel_->takePortToCheck();
}

void ZenlotApp::openSettings() {
    show(settingsWindow_);
}

void ZenlotApp::show(QmlWindow& window) {
    window.openSoon([this](QQuickWindow& opened) { windows_.bringForward(opened); });
}

void ZenlotApp::showOnboarding() {
    onboardingWindow_.openSoon([this](QQuickWindow& window) {
        if (!window.isVisible()) {
            window.setTransientParent(mainWindow_.window());
            QRect place({}, window.size());
            place.moveCenter(window.screen()->availableGeometry().center());
            window.setPosition(place.topLeft());
        }
        OpenWindows(windows_).activate();
        windows_.bringForward(window);
    });
}

// It stands before the window that it was asked for in, which gets the keyboard back from it.
QCoro::Task<> ZenlotApp::openLoginItems() {
    const QPointer<QObject> context(&context_);
    const QPointer<QWindow> asking(QGuiApplication::focusWindow());
    QCoro::Task<> look = backgroundItems_.look();
    co_await look;
    if (!context)
        co_return;
    QQuickWindow* const window = backgroundItemsWindow_.open();
    if (window && asking && asking != window)
        window->setTransientParent(asking);
    show(backgroundItemsWindow_);
}

void ZenlotApp::checkForUpdates() {
    updates_.check();
    show(updateWindow_);
}

// Whatever may be repeated is made so that it changes nothing then. The desktop's search asks for
// the phrases of the "Check Port" intent when it needs them, so none have to be refreshed here.
void ZenlotApp::runStartupSequence() {
    appDelegate_.configure(settings_, appModel_);
    conflictListener_.start(settings_);
    portDataCache_.start();
    finishStartupSequence();
}

QCoro::Task<> ZenlotApp::finishStartupSequence() {
    const QPointer<QObject> context(&context_);
    QCoro::Task<> configuration = notificationManager_.configure(settings_);
    co_await configuration;
    if (!context)
        co_return;
    if (settings_.portMonitoringEnabled())
        portMonitor_.start(settings_);
    refreshMonitorRegistration(RunningMonitor::restart);
}

QCoro::Task<> ZenlotApp::refreshMonitorRegistration(RunningMonitor whenRunning) {
    const QPointer<QObject> context(&context_);
    const auto isWanted = [this] {
        return settings_.portMonitoringEnabled() || settings_.conflictMonitoringEnabled();
    };
    if (!isWanted())
        co_return;
    const QFuture<AgentState> answer = launchAgentInstaller_.state();
    const AgentState state = co_await answer;
    if (!context || !isWanted())
        co_return;
    if (whenRunning == RunningMonitor::restart && state.isInstalled() &&
        !didRefreshMonitorThisLaunch_) {
        didRefreshMonitorThisLaunch_ = true;
        // What goes wrong here shows in the settings, where the monitor can be registered again.
        launchAgentInstaller_.beginRefresh();
        reinstallTimer_.start(kPauseBeforeReinstall);
    } else if (!state.isInstalled()) {
        launchAgentInstaller_.install();
    }
}

void ZenlotApp::noteTroubleWithSettings() {
    using Trouble = AppSettings::Trouble;
    settings_.setTrouble(userDefaults_.isUnwritten() ? Trouble::unwritten : Trouble::none);
}

void ZenlotApp::followSettings() {
    if (userDefaults_.wasDamaged())
        settings_.setTrouble(AppSettings::Trouble::damaged);
    QObject::connect(&userDefaults_, &JsonUserDefaults::troubleChanged, &context_,
                     [this] { noteTroubleWithSettings(); });
    QObject::connect(&settings_, &AppSettings::showInMenuBarChanged, &context_, [this] {
        appDelegate_.updateStatusItem(settings_);
        appDelegate_.updateGlobalShortcut(settings_); // there is none without the item
    });
    QObject::connect(&settings_, &AppSettings::showInDockChanged, &context_,
                     [this] { appDelegate_.applyActivationPolicy(settings_); });
    QObject::connect(&settings_, &AppSettings::globalShortcutEnabledChanged, &context_,
                     [this] { appDelegate_.updateGlobalShortcut(settings_); });
    QObject::connect(&settings_, &AppSettings::portMonitoringEnabledChanged, &context_, [this] {
        if (!settings_.portMonitoringEnabled()) {
            portMonitor_.stop();
            return;
        }
        portMonitor_.start(settings_);
        refreshMonitorRegistration(RunningMonitor::leave);
    });
    QObject::connect(&settings_, &AppSettings::conflictMonitoringEnabledChanged, &context_, [this] {
        if (settings_.conflictMonitoringEnabled())
            refreshMonitorRegistration(RunningMonitor::leave);
    });
    QObject::connect(&notificationManager_, &PortNotificationManager::allWanted, &context_,
                     [this] { openMainWindow(); });
    QObject::connect(&notifications_, &NotificationCenter::portsUpdated, &context_, [this] {
        if (portMonitor_.isRunning())
            portMonitor_.checkForNewListeners();
    });
}

void ZenlotApp::followInstance() {
    instance_.setHandlers(&context_,
                          {.activate =
                               [this](const Activation& activation) {
                                   acceptActivation(activation);
                                   appDelegate_.applicationShouldHandleReopen();
                               },
                           .open =
                               [this](const QStringList& uris, const Activation& activation) {
                                   acceptActivation(activation);
                                   for (const QString& uri : uris)
                                       openUrl(uri);
                               },
                           .checkPort =
                               [this](qint64 port, const Activation& activation) {
                                   acceptActivation(activation);
                                   if (!isValidPort(port))
                                       return;
                                   appModel_.setPendingPort(port);
                                   openMainWindow();
                               }});
}

void ZenlotApp::openUrl(const QString& url) {
    if (url.startsWith(kCommandScheme)) {
        appDelegate_.run(url.mid(kCommandScheme.size()));
        return;
    }
    const std::optional<int> port = portFromUrl(url);
    if (!port)
        return;
    appModel_.setPendingPort(*port);
    openMainWindow();
    alertAboutOwner(*port);
}

QCoro::Task<> ZenlotApp::alertAboutOwner(int port) {
    const QPointer<QObject> context(&context_);
    QCoro::Task<> configuration = notificationManager_.configure(settings_);
    co_await configuration;
    if (!context)
        co_return;
    QFuture<std::vector<PortProcess>> lookup = inventory_.processesOnPort(port);
    const std::vector<PortProcess> owners = co_await lookup;
    if (!context || owners.empty() || owners.front().obstacle == ForceQuitObstacle::gone)
        co_return;
    const PortProcess& owner = owners.front();
    notificationManager_.notifyConflictAnew(port, QString::fromStdString(owner.displayName),
                                            {owner.target().process, owner.obstacle});
}

QQmlEngine& ZenlotApp::engine() {
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        engine_->addImportPath(QCoreApplication::applicationDirPath() +
                               QStringLiteral("/" ZENLOT_PLUGIN_FOLDER));
        engine_->addImportPath(u":/qt/qml"_s);
        QGuiApplication::setWindowIcon(windowIcon());
        ProcessIconProvider::install(*engine_, runningApplications_, workspace_);
        applyMotion();
        QObject::connect(&appearance_, &Appearance::changed, engine_.get(),
                         [this] { applyMotion(); });
    }
    return *engine_;
}

void ZenlotApp::applyMotion() {
    const int type = qmlTypeId("Zenlot.Style", 1, 0, "Theme");
    if (auto* const theme = engine_->singletonInstance<Theme*>(type))
        theme->setMotion(appearance_.wishes().isMotionReduced ? 0 : 1);
}

QVariantMap ZenlotApp::makeMainContent(QObject& owner) {
    auto* const content = new ContentViewModel(
        {inventory_, notifications_, applicationCache_, bundleKeys_, appModel_, settings_,
         userDefaults_, &portStopper_},
        {.openSettings = [this] { openSettings(); },
         .showOnboardingWindow =
             [this] {
                 // The main window appears with this turn of
                 // the event loop; the welcome stands before
                 // it.
                 QMetaObject::invokeMethod(
                     &context_, [this] { showOnboarding(); }, Qt::QueuedConnection);
             }},
        &owner);
    auto* const detail = new ProcessDetailViewModel(detailsLoader_, &owner);
    QObject::connect(content, &ContentViewModel::detailProcessChanged, detail,
                     [content, detail] { detail->setProcess(content->detailProcess()); });
    contentViewModel_ = content;
    return {{u"commands"_s, QVariant::fromValue(new WindowCommands(appDelegate_, &owner))},
            {u"detailViewModel"_s, QVariant::fromValue(detail)},
            {u"viewModel"_s, QVariant::fromValue(content)}};
}

QVariantMap ZenlotApp::makeSettingsContent(QObject& owner) {
    return {{u"commands"_s, QVariant::fromValue(new WindowCommands(appDelegate_, &owner))},
            {u"viewModel"_s,
             QVariant::fromValue(new SettingsViewModel(
                 settings_, launchAgentInstaller_, [this] { openLoginItems(); }, &owner))},
            {u"logViewModel"_s, QVariant::fromValue(new LogTabViewModel(
                                    monitorLogPath(directories_.home), log_, &owner))}};
}

QVariantMap ZenlotApp::makeOnboardingContent(QObject& owner) {
    auto* const viewModel =
        new OnboardingViewModel({settings_, launchAgentInstaller_, systemLog_},
                                {.openLoginItems = [this] { openLoginItems(); }}, &owner);
    return QmlWindow::showing(*viewModel)(owner);
}

} // namespace zenlot
