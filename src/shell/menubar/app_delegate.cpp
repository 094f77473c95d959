#include "shell/menubar/app_delegate.h"

#include "settings/app_settings.h"
#include "shell/menubar/status_menu.h"
#include "shell/model/app_model.h"
#include "text/display_line.h"
#include "text/numbers.h"

#include <QFile>
#include <QLineEdit>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestName = 48; // in a menu
const QString kOpenCommand = u"open"_s;

std::optional<TemplateImage> imageNamed(const QString& name, const QString& themeName) {
    const QString file = u":/zenlot/menubar/%1.svg"_s.arg(name);
    if (!QFile::exists(file))
        return std::nullopt;
    return TemplateImage{file, themeName};
}

void call(const std::function<void()>& action) {
    if (action)
        action();
}

} // namespace

AppDelegate::AppDelegate(const Collaborators& collaborators, Actions actions, QObject* parent)
    : QObject(parent), with_(collaborators), actions_(std::move(actions)), windows_(with_.windows),
      conflict_(with_.inventory, with_.notifications) {
    connect(&conflict_, &ActiveConflict::changed, this, [this] {
        updateStatusIcon();
        installMenu();
    });
    with_.statusBar.observeAvailability(this, [this] {
        Q_EMIT windowMenuNeedChanged();
        if (settings_)
            applyActivationPolicy(*settings_);
    });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::configure(AppSettings& settings, AppModel& appModel) {
    settings_ = &settings;
    appModel_ = &appModel;
    conflict_.configure(settings);
    updateStatusItem(settings);
    applyActivationPolicy(settings);
    updateGlobalShortcut(settings);
}

// ---- The status item ----

void AppDelegate::updateStatusItem(const AppSettings& settings) {
    if (!settings.showInMenuBar()) {
        statusItem_.reset();
        Q_EMIT windowMenuNeedChanged();
        return;
    }
    if (!statusItem_) {
        statusItem_ =
            with_.statusBar.makeStatusItem([this](std::optional<QRect> place) { openMenu(place); });
        Q_EMIT windowMenuNeedChanged();
    }
    updateStatusIcon();
    installMenu();
}

void AppDelegate::updateStatusIcon() {
    if (!statusItem_)
        return;
    const auto image =
        conflict_.current()
            ? imageNamed(u"MenuBarIconNotified"_s, u"dev.quorvane.zenlot-notified-symbolic"_s)
            : imageNamed(u"MenuBarIcon"_s, u"dev.quorvane.zenlot-symbolic"_s);
    if (image)
        statusItem_->setImage(*image);
}

void AppDelegate::installMenu() {
    retireMenu();
    if (!statusItem_)
        return;
    // A panel can't show a field; what it shows leads to that of the main window.
    QList<Command> entries = commands();
    statusItem_->setToolTip(conflict_.current() ? entries.at(2).title : u"Zenlot"_s);
    statusItem_->setMenu(entries);
}

QList<Command> AppDelegate::commands() {
    QList<Command> entries{{.identifier = kCheckPortCommand,
                            .title = tr("Port number\u2026"),
                            .run = [this] { searchInMainWindow(); }},
                           {}};
    if (conflict_.current())
        appendConflict(entries, *conflict_.current());
    entries.append({.identifier = kOpenCommand, .title = tr("Open Zenlot"), .run = [this] {
                        showMainWindow();
                    }});
    entries.append(Command{});
    entries.append({.identifier = kSettingsCommand,
                    .title = tr("Settings\u2026"),
                    .keyEquivalent = u"Ctrl+,"_s,
                    .run = [this] { openSettings(); }});
    entries.append(Command{});
    entries.append({.title = tr("Check for Updates\u2026"),
                    .run = [this] { call(actions_.checkForUpdates); }});
    entries.append(Command{});
    entries.append({.identifier = kQuitCommand,
                    .title = tr("Quit Zenlot"),
                    .keyEquivalent = u"Ctrl+Q"_s,
                    .run = [this] { call(actions_.terminate); }});
    return entries;
}

// And without the lines that would have nothing above them.
QList<Command> AppDelegate::commandsWithout(const QStringList& identifiers) {
    QList<Command> entries;
    for (const Command& command : commands()) {
        const bool isLine = command.title.isEmpty();
        const bool hasGroupAbove = !entries.isEmpty() && !entries.last().title.isEmpty();
        if (isLine ? hasGroupAbove : !identifiers.contains(command.identifier))
            entries.append(command);
    }
    return entries;
}

bool AppDelegate::run(const QString& identifier) {
    const QList<Command> all = commands();
    const auto command = std::ranges::find_if(all, [&](const Command& one) {
        return !identifier.isEmpty() && one.identifier == identifier;
    });
    if (command == all.end())
        return false;
    command->run();
    return true;
}

void AppDelegate::appendConflict(QList<Command>& entries, const Conflict& conflict) {
    // A menu may still be open when the next conflict has come.
    const auto concerning = [this, conflict](auto action) {
        return [this, conflict, action] {
            if (conflict_.current() == conflict)
                (conflict_.*action)();
        };
    };
    const QString port = QString::number(conflict.port);
    const QString name = displayLine(conflict.displayName, kLongestName);
    entries.append({.title = tr("Port %1 blocked by %2").arg(port, name),
                    .symbol = u"exclamationmark.triangle.fill"_s,
                    .symbolDescription = tr("Conflict")});
    if (conflict.obstacle == ForceQuitObstacle::none)
        entries.append(
            {.title = tr("Kill %1").arg(name), .run = concerning(&ActiveConflict::killHolder)});
    entries.append(
        {.title = tr("Ignore Port %1").arg(port), .run = concerning(&ActiveConflict::ignorePort)});
    entries.append(
        {.title = tr("Ignore %1").arg(name), .run = concerning(&ActiveConflict::ignoreProcess)});
    entries.append(
        {.title = tr("Clear Conflict Indicator"), .run = concerning(&ActiveConflict::clear)});
    entries.append(Command{});
}

StatusMenu& AppDelegate::menu() {
    if (menu_)
        return *menu_;
    menu_ = std::make_unique<StatusMenu>(commandsWithout({kCheckPortCommand}), this, edges());
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
        leadToWindowMenu();
}

StatusMenu::Edges AppDelegate::edges() const {
    return with_.windows.blendsWindows() ? StatusMenu::Edges::soft : StatusMenu::Edges::hard;
}

// ---- The menu of a window ----

bool AppDelegate::needsWindowMenu() const {
    return isMenuOutOfReach_ || !statusItem_ || !with_.statusBar.isAvailable();
}

// Where no menu can be put beside the icon, a window has it.
void AppDelegate::leadToWindowMenu() {
    if (!std::exchange(isMenuOutOfReach_, true))
        Q_EMIT windowMenuNeedChanged();
    searchInMainWindow();
}

void AppDelegate::openWindowMenu(QWindow& window, const QRect& place) {
    windowMenu_ = std::make_unique<StatusMenu>(commandsWithout({kCheckPortCommand, kOpenCommand}),
                                               this, edges(), StatusMenu::Search::without);
    windowMenu_->setWindowTitle(tr("Menu"));
    windowMenu_->belongTo(window);
    windowMenu_->popUp(place);
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

// ---- The standing commands ----

// A field without a valid port is left as it is.
void AppDelegate::portSearchCommitted(StatusMenu& menu) {
    // Digits of other scripts are numeric, but make no port.
    const std::optional<qint64> port = decimalNumber(numericCharacters(menu.searchField().text()));
    if (!port || !isValidPort(*port))
        return;
    if (appModel_)
        appModel_->setPendingPort(port);
    menu.searchField().clear();
    menu.close();
    showMainWindow();
}

// Windows open in the next turn of the event loop, when the menu has closed.
void AppDelegate::showMainWindow() {
    QMetaObject::invokeMethod(
        this, [this] { call(actions_.openMainWindow); }, Qt::QueuedConnection);
}

void AppDelegate::searchInMainWindow() {
    showMainWindow();
    QMetaObject::invokeMethod(
        this, [this] { call(actions_.focusPortField); }, Qt::QueuedConnection);
}

void AppDelegate::openSettings() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            windows_.activate();
            call(actions_.openSettings);
        },
        Qt::QueuedConnection);
}

void AppDelegate::updateGlobalShortcut(const AppSettings& settings) {
    eventMonitor_.reset();
    if (settings.showInMenuBar() && settings.globalShortcutEnabled())
        eventMonitor_ = with_.globalShortcut.install([this] { showMainWindow(); });
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
        windows_.activate();
}

void AppDelegate::applicationShouldHandleReopen() {
    if (!windows_.focusExisting())
        call(actions_.openMainWindow);
}

} // namespace zenlot
