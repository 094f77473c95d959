// The real QML, driven by keys and by what a screen reader presses.
#include "settings/window/settings_view_model.h"
#include "support/sample_user.h"
#include "support/temporary_folder.h"
#include "support/window_driver.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_SettingsWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kAdd = u"Add to Ignored "_s;

class SettingsViewTest : public ViewTest, protected SampleUser {
  protected:
    SettingsViewTest() {
        open("SettingsWindow/SettingsView.qml",
             {{u"logTab"_s, QVariant::fromValue(&logTab)},
              {u"viewModel"_s, QVariant::fromValue(&viewModel)}});
    }

    // Presses, as a screen reader does, the only one or one of several with that name. Rows that
    // are on their way out have no index any more.
    void choose(const QString& name, int which = 0) {
        QList<QQuickItem*> items;
        ASSERT_TRUE(waitFor([&] {
            items = itemsNamed(name);
            items.removeIf([](QQuickItem* item) {
                return !item->inherits("QQuickAbstractButton") ||
                       item->property("index").toInt() < 0;
            });
            return items.size() > which;
        })) << name.toStdString();
        QAccessible::queryAccessibleInterface(items.at(which))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }

    bool comesToBe(bool isOn) {
        return waitFor([&] { return settings.conflictMonitoringEnabled() == isOn; });
    }

    // Opens the tab anew, and waits until the state of the monitor has been looked at.
    void lookAgain(bool isOn, AppServiceStatus status) {
        choose(u"General"_s);
        settings.setConflictMonitoringEnabled(isOn);
        monitor.currentStatus = status;
        choose(u"Port Monitoring"_s);
        settle();
    }

    SettingsViewModel viewModel{settings, installer, openLoginItems};
    QQuickItem logTab;
};

TEST_F(SettingsViewTest, SwitchesWriteWhatTheyShow) {
    for (const auto& [text, property] : {std::pair(u"Show in menu bar"_s, "showInMenuBar"),
                                         {u"Show in Dock"_s, "showInDock"},
                                         {u"Launch at login"_s, "launchAtLogin"},
                                         {u"Enable global shortcut"_s, "globalShortcutEnabled"}}) {
        const bool before = settings.property(property).toBool();
        choose(text);
        EXPECT_EQ(settings.property(property).toBool(), !before) << property;
        EXPECT_EQ(itemsNamed(text).at(0)->property("isOn").toBool(), !before) << property;
    }
    choose(u"Log"_s);
    EXPECT_TRUE(logTab.isVisible());
}

TEST_F(SettingsViewTest, SaysWhetherTheSystemTellsOfRefusedPorts) {
    const TemporaryFolder folder;
    const QString socket = QString::fromStdString((folder.path() / "binds").string());
    SettingsViewModel other(settings, installer, openLoginItems, nullptr, socket);
    QSignalSpy changed(&other, &SettingsViewModel::hasBindwatchChanged);
    for (const bool isThere : {true, false}) {
        if (isThere)
            folder.write("binds", "");
        else
            std::filesystem::remove(folder.path() / "binds");
        other.lookForBindwatch();
        EXPECT_TRUE(waitFor([&] { return other.hasBindwatch() == isThere; }));
    }
    EXPECT_EQ(changed.size(), 2);

    choose(u"Port Monitoring"_s);
    auto* line = view.findChild<QQuickItem*>(u"bindwatchLine"_s);
    ASSERT_TRUE(line);
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(line->property("text").toString().contains(viewModel.bindwatchCommand()),
              !viewModel.hasBindwatch());
}

TEST_F(SettingsViewTest, ListsTakeWhatCanBeAnEntryInOrder) {
    settings.setPortMonitoringEnabled(true);
    settings.setMonitorIgnoredPorts({8080, 22});
    settings.setMonitorIgnoredApps({u"node"_s});
    choose(u"Port Monitoring"_s);
    const QAbstractItemModelTester ports(viewModel.monitorPorts());
    const QAbstractItemModelTester names(viewModel.monitorApps());
    const QString portsTitle = u"ports"_s;
    const QString namesTitle = u"processes"_s;
    const struct {
        QString list;
        QString typed;
        int ending;
        QList<qint64> ports;
        QStringList names;
    } cases[] = {
        {portsTitle, u"  3000 "_s, Qt::Key_Return, {22, 3000, 8080}, {u"node"_s}},
        {portsTitle, u"+0080"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_s}},
        {portsTitle, u"080"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_s}},
        {portsTitle, u"65536"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_s}},
        {portsTitle, u"8 0"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_s}},
        {portsTitle, u"81"_s, Qt::Key_Escape, {22, 80, 3000, 8080}, {u"node"_s}},
        {namesTitle, u"Node"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"Node"_s, u"node"_s}},
        {namesTitle, u" node"_s, Qt::Key_Return, {22, 80, 3000, 8080}, {u"Node"_s, u"node"_s}},
    };
    for (const auto& [list, typed, ending, expectedPorts, expectedNames] : cases) {
        choose(kAdd + list);
        ASSERT_FALSE(itemsNamed(kAdd + list).at(0)->isEnabled());
        type(typed);
        press(ending);
        EXPECT_EQ(settings.monitorIgnoredPorts(), expectedPorts) << typed.toStdString();
        EXPECT_EQ(settings.monitorIgnoredApps(), expectedNames) << typed.toStdString();
        EXPECT_TRUE(itemsNamed(kAdd + list).at(0)->isEnabled()) << "the field has closed";
    }

    const QString remove = u"Remove from Ignored ports"_s;
    EXPECT_FALSE(itemsNamed(remove).at(0)->isEnabled());
    settings.setMonitorIgnoredPorts({80, 22, 80}); // as another program may have written it
    choose(u"80"_s, 1);
    choose(remove);
    EXPECT_EQ(settings.monitorIgnoredPorts(), QList<qint64>{22});
    EXPECT_FALSE(itemsNamed(remove).at(0)->isEnabled());

    // What was begun goes with the section; what is stored stays.
    choose(kAdd + portsTitle);
    type(u"99"_s);
    choose(u"Notify on all port activity"_s);
    EXPECT_TRUE(itemsNamed(kAdd + portsTitle).isEmpty());
    choose(u"Notify on all port activity"_s);
    EXPECT_TRUE(itemsNamed(kAdd + portsTitle).at(0)->isEnabled());
    EXPECT_EQ(settings.monitorIgnoredPorts(), QList<qint64>{22});
}

TEST_F(SettingsViewTest, KeyboardReachesEverythingAndBringsItIntoView) {
    settings.setPortMonitoringEnabled(true);
    settings.setMonitorIgnoredPorts({22, 80});
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(440, 300); // less than the form needs
    view.rootObject()->forceActiveFocus();
    const std::pair<Qt::Key, QString> steps[] = {
        {Qt::Key_Right, u"Port Monitoring"_s},
        {Qt::Key_Tab, u"Notify on all port activity"_s},
        {Qt::Key_Tab, u"Conflict Monitoring"_s},
        {Qt::Key_Tab, u"Ignored ports"_s},
        {Qt::Key_Down, u"22"_s},
        {Qt::Key_Tab, kAdd + u"ports"_s},
        {Qt::Key_Tab, u"Remove from Ignored ports"_s},
        {Qt::Key_Return, u"Ignored ports"_s}, // the button has nothing to remove any more
        {Qt::Key_Tab, kAdd + u"ports"_s},
        {Qt::Key_Tab, u"Ignored processes"_s},
        {Qt::Key_Tab, kAdd + u"processes"_s},
        {Qt::Key_Tab, u"Port Monitoring"_s},
        {Qt::Key_Backtab, kAdd + u"processes"_s},
        {Qt::Key_Tab, u"Port Monitoring"_s},
        {Qt::Key_Left, u"General"_s},
        {Qt::Key_Tab, u"Show in menu bar"_s},
    };
    for (const auto& [key, name] : steps) {
        press(key);
        const QQuickItem* item = view.activeFocusItem();
        EXPECT_EQ(focused().toStdString(), name.toStdString());
        EXPECT_TRUE(QRectF(0, 0, 440, 300).contains(item->mapRectToScene(item->boundingRect())))
            << name.toStdString();
    }
    EXPECT_EQ(settings.monitorIgnoredPorts(), QList<qint64>{80});
}

TEST_F(SettingsViewTest, ConflictSwitchIsOnOnlyWhenTheMonitorIs) {
    const QString conflicts = u"Conflict Monitoring"_s;
    choose(u"Port Monitoring"_s);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());

    monitor.refusal = AppServiceError{u"org.x"_s, 7, u"<b>no</b>"_s};
    choose(conflicts);
    EXPECT_NE(waitForItem(u"[org.x 7] <b>no</b>"_s), nullptr);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());

    monitor.refusal.reset();
    choose(conflicts);
    EXPECT_TRUE(comesToBe(true));
    EXPECT_TRUE(viewModel.installError().isEmpty());

    monitor.refusal = AppServiceError{};
    choose(conflicts);
    EXPECT_TRUE(comesToBe(false)) << "whatever the service says";
    EXPECT_EQ(monitor.unregisterCalls, 1);

    // Whoever has it elsewhere has not asked for alerts; whoever ends it there gets none.
    monitor.refusal.reset();
    for (const auto& [isOn, status] : {std::pair(false, AppServiceStatus::requiresApproval),
                                       {false, AppServiceStatus::enabled},
                                       {true, AppServiceStatus::requiresApproval},
                                       {true, AppServiceStatus::enabled}}) {
        lookAgain(isOn, status);
        EXPECT_EQ(settings.conflictMonitoringEnabled(), isOn);
    }
    lookAgain(true, AppServiceStatus::notRegistered);
    EXPECT_TRUE(comesToBe(false));

    // A monitor that the desktop has given up on is not on, and can be tried once more.
    monitor.currentFailure = AppServiceError{u"org.x"_s, 4, u"given up"_s};
    lookAgain(true, AppServiceStatus::enabled);
    EXPECT_TRUE(comesToBe(false));
    EXPECT_NE(waitForItem(u"[org.x 4] given up"_s), nullptr);
    monitor.currentFailure.reset();
    choose(conflicts);
    EXPECT_TRUE(comesToBe(true));
    EXPECT_TRUE(itemsNamed(u"[org.x 4] given up"_s).isEmpty());
}

} // namespace
} // namespace zenlot
