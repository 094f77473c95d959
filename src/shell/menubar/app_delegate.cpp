#include "shell/menubar/app_delegate.h"

#include "monitoring/ignore_entries.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/updater.h"
#include "settings/app_settings.h"
#include "shell/menubar/status_menu.h"
#include "shell/model/app_model.h"
#include "shell/model/command.h"
#include "text/display_line.h"

#include <QFile>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>
#include <QWindow>
#include <unicode/uchar.h>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestName = 48; // in a menu
constexpr QSize kOnboardingSize(440, 540);
constexpr qint64 kHighestPort = 65535;

QString numericCharacters(const QString& text) {
    QString kept;
    for (const uint codePoint : text.toUcs4()) {
        if (u_getNumericValue(static_cast<UChar32>(codePoint)) != U_NO_NUMERIC_VALUE)
            kept += QChar::fromUcs4(codePoint);
    }
    return kept;
}

// Digits of other scripts are numeric, but make no port.
std::optional<qint64> portIn(const QString& text) {
    const QString digits = numericCharacters(text);
    const bool isDecimal =
        std::ranges::all_of(digits, [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
    bool isNumber = false;
    const qint64 port = digits.toLongLong(&isNumber);
    if (!isDecimal || !isNumber || port < 1 || port > kHighestPort)
        return std::nullopt;
    return port;
}

std::optional<TemplateImage> imageNamed(const QString& name, const QString& themeName) {
    const QString file = u":/zenlot/menubar/%1.svg"_s.arg(name);
    if (!QFile::exists(file))
        return std::nullopt;
    return TemplateImage{file, themeName};
}

QString nameInMenu(const MenuBarConflict& conflict) {
    return displayLine(conflict.displayName, kLongestName);
}

bool isSameName(const std::string& one, const QString& other) {
    return QString::fromStdString(one).toLower() == other.toLower();
}

bool canBecomeKey(const QWindow& window) {
    return !window.flags().testFlag(Qt::WindowDoesNotAcceptFocus);
}

StatusMenuEntry entryFor(Command& command) {
    return {.title = command.text(),
            .keyEquivalent = command.keyEquivalent(),
            .run = [&command] { command.run(); },
            .isEnabled = command.isEnabled()};
}

} // namespace

AppDelegate::AppDelegate(const Collaborators& collaborators, Actions actions, QObject* parent)
    : QObject(parent), with_(collaborators), actions_(std::move(actions)),
      openCommand_(std::make_unique<Command>(tr("Open Zenlot"), QString(), [this] { openApp(); })),
      settingsCommand_(std::make_unique<Command>(tr("Settings\u2026"), u"Ctrl+,"_s,
                                                 [this] { openSettingsItem(); })),
      updatesCommand_(std::make_unique<Command>(tr("Check for Updates\u2026"), QString(),
                                                [this] { checkForUpdates(); })),
      quitCommand_(
          std::make_unique<Command>(tr("Quit Zenlot"), u"Ctrl+Q"_s, [this] { quitApp(); })) {
    for (Command* command :
         {openCommand_.get(), settingsCommand_.get(), updatesCommand_.get(), quitCommand_.get()})
        connect(command, &Command::changed, this, &AppDelegate::installMenu);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::configure(AppSettings& settings, AppModel& appModel) {
    settings_ = &settings;
    appModel_ = &appModel;
    installObservers();
    updateStatusItem(settings);
    applyActivationPolicy(settings);
    updateGlobalShortcut(settings);
}

void AppDelegate::installObservers() {
    if (std::exchange(hasObservers_, true))
        return;
    with_.notifications.observe(kConflictDetected, this,
                                [this](const UserInfo& info) { handleConflictDetected(info); });
    with_.notifications.observe(kConflictHandled, this,
                                [this](const UserInfo& info) { handleConflictHandled(info); });
    with_.statusBar.observeAvailability(this, [this] {
        if (settings_)
            applyActivationPolicy(*settings_);
    });
}

// ---- The status item ----

void AppDelegate::updateStatusItem(const AppSettings& settings) {
    if (!settings.showInMenuBar()) {
        statusItem_.reset();
        return;
    }
    if (!statusItem_)
        statusItem_ =
            with_.statusBar.makeStatusItem([this](std::optional<QRect> place) { openMenu(place); });
    updateStatusIcon();
    installMenu();
}

void AppDelegate::updateStatusIcon() {
    if (!statusItem_)
        return;
    const auto image =
        activeConflict_
            ? imageNamed(u"MenuBarIconNotified"_s, u"dev.quorvane.zenlot-notified-symbolic"_s)
            : imageNamed(u"MenuBarIcon"_s, u"dev.quorvane.zenlot-symbolic"_s);
    if (image)
        statusItem_->setImage(*image);
}

void AppDelegate::installMenu() {
    retireMenu();
    if (!statusItem_)
        return;
    QList<StatusMenuEntry> entries = buildMenu();
    statusItem_->setToolTip(activeConflict_ ? entries.front().title : u"Zenlot"_s);
    // A panel can't show a field; what it shows leads to that of the main window.
    entries.prepend({});
    entries.prepend({.title = tr("Port number\u2026"), .run = [this] { searchInMainWindow(); }});
    statusItem_->setMenu(entries);
}

// Without the search field, which is no command.
QList<StatusMenuEntry> AppDelegate::buildMenu() {
    QList<StatusMenuEntry> entries;
    if (activeConflict_)
        appendConflict(entries);
    entries.append(entryFor(*openCommand_));
    entries.append(StatusMenuEntry{});
    entries.append(entryFor(*settingsCommand_));
    entries.append(StatusMenuEntry{});
    entries.append(entryFor(*updatesCommand_));
    entries.append(StatusMenuEntry{});
    entries.append(entryFor(*quitCommand_));
    return entries;
}

void AppDelegate::appendConflict(QList<StatusMenuEntry>& entries) {
    const MenuBarConflict& conflict = *activeConflict_;
    // A menu may still be open when the next conflict has come.
    const auto concerning = [this, conflict](void (AppDelegate::*action)()) {
        return [this, conflict, action] {
            if (activeConflict_ == conflict)
                (this->*action)();
        };
    };
    const QString port = QString::number(conflict.port);
    const QString name = nameInMenu(conflict);
    entries.append({.title = tr("Port %1 blocked by %2").arg(port, name),
                    .symbol = u"exclamationmark.triangle.fill"_s,
                    .symbolDescription = tr("Conflict")});
    if (conflict.obstacle == ForceQuitObstacle::none)
        entries.append({.title = tr("Kill %1").arg(name),
                        .run = concerning(&AppDelegate::killConflictingProcess)});
    entries.append({.title = tr("Ignore Port %1").arg(port),
                    .run = concerning(&AppDelegate::ignoreConflictingPort)});
    entries.append({.title = tr("Ignore %1").arg(name),
                    .run = concerning(&AppDelegate::ignoreConflictingProcess)});
    entries.append({.title = tr("Clear Conflict Indicator"),
                    .run = concerning(&AppDelegate::clearConflictIndicator)});
    entries.append(StatusMenuEntry{});
}

StatusMenu& AppDelegate::menu() {
    if (menu_)
        return *menu_;
    menu_ = std::make_unique<StatusMenu>(buildMenu(), this,
                                         with_.windows.blendsWindows() ? StatusMenu::Edges::soft
                                                                       : StatusMenu::Edges::hard);
    connect(menu_.get(), &StatusMenu::portSearchCommitted, this,
            [this, menu = menu_.get()] { portSearchCommitted(*menu); });
    return *menu_;
}

void AppDelegate::openMenu(std::optional<QRect> place) {
    if (menu_ && menu_->isVisible())
        menu_->close();
    else if (place)
        menu().popUp(*place);
    else
        searchInMainWindow();
}

// One that is open goes when the user is done with it.
void AppDelegate::retireMenu() {
    if (!menu_ || !menu_->isVisible()) {
        menu_.reset();
        return;
    }
    StatusMenu* menu = menu_.release();
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);
    connect(this, &QObject::destroyed, menu, &QObject::deleteLater);
}

// ---- The conflict ----

void AppDelegate::handleConflictDetected(const UserInfo& info) {
    const auto port = info.integer(kPortKey);
    const auto pid = info.integer(kPidKey);
    const auto processName = info.string(kProcessNameKey);
    const auto displayName = info.string(kDisplayNameKey);
    if (!port || !pid || !processName || !displayName)
        return;
    const auto none = static_cast<std::int64_t>(ForceQuitObstacle::none);
    setActiveConflict(MenuBarConflict{
        .port = *port,
        .pid = *pid,
        .processName = processName->toStdString(),
        .displayName = displayName->toStdString(),
        .startTime = info.integer(kStartTimeKey),
        .obstacle = static_cast<ForceQuitObstacle>(info.integer(kObstacleKey).value_or(none)),
    });
}

void AppDelegate::handleConflictHandled(const UserInfo& info) {
    if (!activeConflict_)
        return;
    const MenuBarConflict& active = *activeConflict_;
    const auto port = info.integer(kPortKey);
    const auto pid = info.integer(kPidKey);
    const auto name = info.string(kProcessNameKey);
    if (port && *port != active.port)
        return;
    if (pid && *pid != active.pid)
        return;
    const auto startTime = info.integer(kStartTimeKey);
    if (startTime && active.startTime && startTime != active.startTime)
        return;
    if (name && !isSameName(active.processName, *name) && !isSameName(active.displayName, *name))
        return;
    clearActiveConflict();
}

void AppDelegate::setActiveConflict(std::optional<MenuBarConflict> conflict) {
    activeConflict_ = std::move(conflict);
    updateStatusIcon();
    installMenu();
}

void AppDelegate::clearActiveConflict() {
    setActiveConflict(std::nullopt);
}

// The user is done with it, so its alert goes too.
void AppDelegate::finishActiveConflict() {
    if (!activeConflict_)
        return;
    const MenuBarConflict conflict = *activeConflict_;
    clearActiveConflict();
    UserInfo info{{kPortKey, conflict.port},
                  {kPidKey, conflict.pid},
                  {kProcessNameKey, QString::fromStdString(conflict.displayName)}};
    if (conflict.startTime)
        info.set(kStartTimeKey, *conflict.startTime);
    with_.notifications.post(kConflictHandled, info);
}

// A conflict that came while the kill was under way stays.
void AppDelegate::killConflictingProcess() {
    if (!activeConflict_ || activeConflict_->obstacle != ForceQuitObstacle::none)
        return;
    // A future's own continuation may not outlive its context.
    auto* answer = new QFutureWatcher<bool>(this);
    connect(answer, &QFutureWatcherBase::finished, this,
            [this, answer, conflict = *activeConflict_] {
                answer->deleteLater();
                if (activeConflict_ == conflict)
                    finishActiveConflict();
            });
    answer->setFuture(with_.inventory.forceQuitProcess(
        {{activeConflict_->pid, activeConflict_->startTime}, activeConflict_->port}));
}

void AppDelegate::ignoreConflictingPort() {
    if (!activeConflict_ || !settings_)
        return;
    ignorePort(*settings_, activeConflict_->port);
    finishActiveConflict();
}

void AppDelegate::ignoreConflictingProcess() {
    if (!activeConflict_ || !settings_ || activeConflict_->processName.empty())
        return;
    ignoreProcess(*settings_, QString::fromStdString(activeConflict_->processName));
    finishActiveConflict();
}

void AppDelegate::clearConflictIndicator() {
    finishActiveConflict();
}

// ---- The standing commands ----

void AppDelegate::portSearchCommitted(StatusMenu& menu) {
    if (!handlePortSearch(menu.searchField().text()))
        return;
    menu.searchField().clear();
    menu.close();
    showSomeWindow();
}

bool AppDelegate::handlePortSearch(const QString& text) {
    const std::optional<qint64> port = portIn(text);
    if (port && appModel_)
        appModel_->setPendingPort(port);
    return port.has_value();
}

void AppDelegate::openApp() {
    if (menu_)
        menu_->close();
    showSomeWindow();
}

void AppDelegate::showSomeWindow() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (!focusExistingWindow() && openMainWindow_)
                openMainWindow_();
        },
        Qt::QueuedConnection);
}

void AppDelegate::searchInMainWindow() {
    showSomeWindow();
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (actions_.focusPortField)
                actions_.focusPortField();
        },
        Qt::QueuedConnection);
}

void AppDelegate::openSettingsItem() {
    if (menu_)
        menu_->close();
    QMetaObject::invokeMethod(this, &AppDelegate::showSettings, Qt::QueuedConnection);
}

void AppDelegate::showSettings() {
    activate();
    if (openSettingsAction_) {
        openSettingsAction_();
        return;
    }
    if (appModel_)
        appModel_->setOpenSettingsRequested(true);
    focusExistingWindow();
}

void AppDelegate::checkForUpdates() {
    with_.updater.checkForUpdates();
}

void AppDelegate::quitApp() const {
    if (actions_.terminate)
        actions_.terminate();
}

void AppDelegate::updateGlobalShortcut(const AppSettings& settings) {
    eventMonitor_.reset();
    if (settings.showInMenuBar() && settings.globalShortcutEnabled())
        eventMonitor_ = with_.globalShortcut.install([this] { showSomeWindow(); });
}

// ---- The windows ----

void AppDelegate::applyActivationPolicy(const AppSettings& settings) {
    // Without a status area the taskbar is the only way to a window.
    const bool isRegular = settings.showInDock() || !with_.statusBar.isAvailable();
    const auto wanted = isRegular ? ActivationPolicy::regular : ActivationPolicy::accessory;
    if (with_.windows.activationPolicy() == wanted)
        return;
    with_.windows.setActivationPolicy(wanted);
    // It was the user who asked for the dock; a panel that ends must not make windows jump.
    if (settings.showInDock())
        activate();
}

// All windows, among which the one that has the keyboard stays on top.
void AppDelegate::activate() {
    QWindow* active = QGuiApplication::focusWindow();
    QList<QWindow*> windows = with_.windows.windows();
    if (windows.removeOne(active))
        windows.append(active);
    for (QWindow* window : windows)
        with_.windows.orderFront(*window);
}

bool AppDelegate::focusExistingWindow() {
    const QList<QWindow*> windows = with_.windows.windows();
    if (windows.isEmpty())
        return false;
    const auto first =
        std::ranges::find_if(windows, [](const QWindow* window) { return canBecomeKey(*window); });
    with_.windows.bringForward(**(first == windows.end() ? windows.begin() : first));
    return true;
}

void AppDelegate::applicationShouldHandleReopen() {
    if (!focusExistingWindow() && openMainWindow_)
        openMainWindow_();
}

QWindow* AppDelegate::windowNamed(const QString& name) const {
    const QList<QWindow*> windows = with_.windows.windows();
    const auto found = std::ranges::find_if(
        windows, [&](const QWindow* window) { return window->objectName() == name; });
    return found == windows.end() ? nullptr : *found;
}

void AppDelegate::showOnboardingWindow(AppSettings& settings) {
    if (!onboardingWindow_) {
        if (actions_.makeOnboardingWindow)
            onboardingWindow_ = actions_.makeOnboardingWindow(settings);
        if (!onboardingWindow_)
            return;
        QWindow& window = *onboardingWindow_;
        window.setTitle(tr("Welcome to Zenlot"));
        window.setObjectName(u"onboarding"_s);
        window.setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                        Qt::WindowCloseButtonHint);
        window.setMinimumSize(kOnboardingSize);
        window.setMaximumSize(kOnboardingSize);
        QRect frame({}, kOnboardingSize);
        frame.moveCenter(window.screen()->availableGeometry().center());
        window.setGeometry(frame);
        window.setTransientParent(windowNamed(u"main"_s));
    }
    bringAppToFront();
}

void AppDelegate::bringAppToFront() {
    for (QWindow* window : with_.windows.windows()) {
        if (window->transientParent() == nullptr)
            with_.windows.orderFront(*window);
    }
    if (onboardingWindow_)
        with_.windows.bringForward(*onboardingWindow_);
}

void AppDelegate::closeOnboardingWindow() {
    if (!onboardingWindow_)
        return;
    onboardingWindow_->setTransientParent(nullptr);
    onboardingWindow_->hide();
    // What asks to close the window may be part of it.
    onboardingWindow_.release()->deleteLater();
}

} // namespace zenlot
