// The real QML, driven by keys and by what a screen reader presses.
#include "platform/fake_app_service.h"
#include "platform/fake_background_items_settings.h"
#include "platform/fake_system_log.h"
#include "platform/fake_user_defaults.h"
#include "settings/window/settings_view_model.h"
#include "support/temporary_folder.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <functional>

Q_IMPORT_QML_PLUGIN(Zenlot_SettingsWindowPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

const QString kAdd = u"Add to Ignored "_qs;

class SettingsViewTest : public testing::Test {
  protected:
    SettingsViewTest() {
        view.engine()->addImportPath(u":/qt/qml"_qs);
        view.setInitialProperties({{u"logTab"_qs, QVariant::fromValue(&logTab)},
                                   {u"viewModel"_qs, QVariant::fromValue(&viewModel)}});
        view.setSource(QUrl(u"qrc:/qt/qml/Zenlot/SettingsWindow/SettingsView.qml"_qs));
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    static void collect(QQuickItem* root, const QString& name, QList<QQuickItem*>& found) {
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(root);
        if (root->isVisible() && interface && !interface->state().invisible &&
            interface->text(QAccessible::Name) == name)
            found.append(root);
        for (QQuickItem* child : root->childItems())
            collect(child, name, found);
    }

    QList<QQuickItem*> itemsNamed(const QString& name) {
        QList<QQuickItem*> found;
        collect(view.contentItem(), name, found);
        return found;
    }

    // Presses the only, or one of several, with that name. Rows that are on their way out have no
    // index any more.
    void press(const QString& name, int which = 0) {
        QList<QQuickItem*> items;
        const auto find = [&] {
            items = itemsNamed(name);
            items.removeIf([](QQuickItem* item) {
                return !item->inherits("QQuickAbstractButton") ||
                       item->property("index").toInt() < 0;
            });
            return items.size() > which;
        };
        ASSERT_TRUE(QTest::qWaitFor(find, 10'000)) << name.toStdString();
        QAccessible::queryAccessibleInterface(items.at(which))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
    }

    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(&view, character.toLatin1());
    }

    FakeUserDefaults defaults;
    FakeAppService loginItem;
    FakeAppService agent;
    FakeSystemLog log;
    FakeBackgroundItemsSettings loginItems;
    AppSettings settings{defaults, loginItem};
    LaunchAgentInstaller installer{agent, log, u"/opt/zenlot"_qs};
    SettingsViewModel viewModel{settings, installer, loginItems};
    QQuickItem logTab;
    QQuickView view;
};

TEST_F(SettingsViewTest, SwitchesWriteWhatTheyShow) {
    for (const auto& [text, property] : {std::pair(u"Show in menu bar"_qs, "showInMenuBar"),
                                         {u"Show in Dock"_qs, "showInDock"},
                                         {u"Launch at login"_qs, "launchAtLogin"},
                                         {u"Enable global shortcut"_qs, "globalShortcutEnabled"}}) {
        const bool before = settings.property(property).toBool();
        press(text);
        EXPECT_EQ(settings.property(property).toBool(), !before) << property;
        EXPECT_EQ(itemsNamed(text).at(0)->property("isOn").toBool(), !before) << property;
    }
    press(u"Log"_qs);
    EXPECT_TRUE(logTab.isVisible());
}

TEST_F(SettingsViewTest, SaysWhetherTheSystemTellsOfRefusedPorts) {
    const TemporaryFolder folder;
    const QString socket = QString::fromStdString((folder.path() / "binds").string());
    SettingsViewModel other(settings, installer, loginItems, nullptr, socket);
    other.lookForBindwatch();
    EXPECT_FALSE(other.hasBindwatch());
    QSignalSpy changed(&other, &SettingsViewModel::hasBindwatchChanged);
    folder.write("binds", "");
    other.lookForBindwatch();
    EXPECT_TRUE(other.hasBindwatch());
    EXPECT_EQ(changed.size(), 1);

    press(u"Port Monitoring"_qs);
    auto* line = view.findChild<QQuickItem*>(u"bindwatchLine"_qs);
    ASSERT_TRUE(line);
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(line->property("text").toString().contains(viewModel.bindwatchCommand()),
              !viewModel.hasBindwatch());
}

TEST_F(SettingsViewTest, ListsTakeWhatCanBeAnEntryInOrder) {
    settings.setPortMonitoringEnabled(true);
    settings.setMonitorIgnoredPorts({8080, 22});
    settings.setMonitorIgnoredApps({u"node"_qs});
    press(u"Port Monitoring"_qs);
    const QAbstractItemModelTester ports(viewModel.monitorPorts());
    const QAbstractItemModelTester names(viewModel.monitorApps());
    const QString portsTitle = u"ports"_qs;
    const QString namesTitle = u"processes"_qs;
    const struct {
        QString list;
        QString typed;
        int ending;
        QList<qint64> ports;
        QStringList names;
    } cases[] = {
        {portsTitle, u"  3000 "_qs, Qt::Key_Return, {22, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"+0080"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"080"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"0"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"65536"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"80a"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"8 0"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u""_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"node"_qs}},
        {portsTitle, u"81"_qs, Qt::Key_Escape, {22, 80, 3000, 8080}, {u"node"_qs}},
        {namesTitle, u"Node"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"Node"_qs, u"node"_qs}},
        {namesTitle, u" node"_qs, Qt::Key_Return, {22, 80, 3000, 8080}, {u"Node"_qs, u"node"_qs}},
    };
    for (const auto& [list, typed, ending, expectedPorts, expectedNames] : cases) {
        press(kAdd + list);
        ASSERT_FALSE(itemsNamed(kAdd + list).at(0)->isEnabled());
        type(typed);
        QTest::keyClick(&view, static_cast<Qt::Key>(ending));
        EXPECT_EQ(settings.monitorIgnoredPorts(), expectedPorts) << typed.toStdString();
        EXPECT_EQ(settings.monitorIgnoredApps(), expectedNames) << typed.toStdString();
        EXPECT_TRUE(itemsNamed(kAdd + list).at(0)->isEnabled()) << "the field has closed";
    }

    const QString remove = u"Remove from Ignored ports"_qs;
    EXPECT_FALSE(itemsNamed(remove).at(0)->isEnabled());
    settings.setMonitorIgnoredPorts({80, 22, 80}); // as another program may have written it
    press(u"80"_qs, 1);
    press(remove);
    EXPECT_EQ(settings.monitorIgnoredPorts(), QList<qint64>{22});
    EXPECT_FALSE(itemsNamed(remove).at(0)->isEnabled());

    // What was begun goes with the section; what is stored stays.
    press(kAdd + portsTitle);
    type(u"99"_qs);
    press(u"Notify on all port activity"_qs);
    EXPECT_TRUE(itemsNamed(kAdd + portsTitle).isEmpty());
    press(u"Notify on all port activity"_qs);
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
        {Qt::Key_Right, u"Port Monitoring"_qs},
        {Qt::Key_Tab, u"Notify on all port activity"_qs},
        {Qt::Key_Tab, u"Conflict Monitoring"_qs},
        {Qt::Key_Tab, u"Ignored ports"_qs},
        {Qt::Key_Down, u"22"_qs},
        {Qt::Key_Tab, kAdd + u"ports"_qs},
        {Qt::Key_Tab, u"Remove from Ignored ports"_qs},
        {Qt::Key_Return, u"Ignored ports"_qs}, // the button has nothing to remove any more
        {Qt::Key_Tab, kAdd + u"ports"_qs},
        {Qt::Key_Tab, u"Ignored processes"_qs},
        {Qt::Key_Tab, kAdd + u"processes"_qs},
        {Qt::Key_Tab, u"Port Monitoring"_qs},
        {Qt::Key_Backtab, kAdd + u"processes"_qs},
        {Qt::Key_Tab, u"Port Monitoring"_qs},
        {Qt::Key_Left, u"General"_qs},
        {Qt::Key_Tab, u"Show in menu bar"_qs},
    };
    for (const auto& [key, name] : steps) {
        QTest::keyClick(&view, key);
        const QQuickItem* item = view.activeFocusItem();
        QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(view.activeFocusItem());
        EXPECT_EQ(shown->text(QAccessible::Name).toStdString(), name.toStdString());
        EXPECT_TRUE(QRectF(0, 0, 440, 300).contains(item->mapRectToScene(item->boundingRect())))
            << name.toStdString();
    }
    EXPECT_EQ(settings.monitorIgnoredPorts(), QList<qint64>{80});
}

TEST_F(SettingsViewTest, ConflictSwitchIsOnOnlyWhenTheMonitorIs) {
    const QString conflicts = u"Conflict Monitoring"_qs;
    const QString recheck = u"I've enabled it — re-check"_qs;
    press(u"Port Monitoring"_qs);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());

    agent.refusal = AppServiceError{u"org.x"_qs, 7, u"<b>no</b>"_qs};
    press(conflicts);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());
    EXPECT_EQ(itemsNamed(u"[org.x 7] <b>no</b>"_qs).size(), 1);
    EXPECT_TRUE(itemsNamed(recheck).isEmpty());

    agent.refusal.reset();
    agent.currentStatus = AppServiceStatus::requiresApproval;
    press(conflicts);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());
    EXPECT_EQ(loginItems.openings, 1);
    EXPECT_EQ(viewModel.installError(), InstallError::requiresApproval().description());
    press(u"Open Login Items"_qs);
    EXPECT_EQ(loginItems.openings, 2);
    press(recheck);
    EXPECT_TRUE(viewModel.installError().startsWith(u"Zenlot is still blocked. Toggle \"Allow"));
    EXPECT_FALSE(itemsNamed(recheck).isEmpty());

    agent.currentStatus = AppServiceStatus::enabled;
    press(recheck);
    EXPECT_TRUE(settings.conflictMonitoringEnabled());
    EXPECT_TRUE(itemsNamed(recheck).isEmpty());

    agent.refusal = AppServiceError{};
    press(conflicts);
    EXPECT_EQ(agent.unregisterCalls, 1);
    EXPECT_FALSE(settings.conflictMonitoringEnabled()) << "whatever the service says";

    // Whoever changes it elsewhere is believed each time the tab appears.
    press(u"General"_qs);
    agent.currentStatus = AppServiceStatus::requiresApproval;
    press(u"Port Monitoring"_qs);
    EXPECT_TRUE(settings.conflictMonitoringEnabled());

    // A monitor that the desktop has given up on is not on, and can be tried once more.
    press(u"General"_qs);
    agent.currentStatus = AppServiceStatus::enabled;
    agent.currentFailure = AppServiceError{u"org.x"_qs, 4, u"given up"_qs};
    press(u"Port Monitoring"_qs);
    EXPECT_FALSE(settings.conflictMonitoringEnabled());
    EXPECT_EQ(itemsNamed(u"[org.x 4] given up"_qs).size(), 1);
    agent.refusal.reset();
    agent.currentFailure.reset();
    press(conflicts);
    EXPECT_TRUE(settings.conflictMonitoringEnabled());
    EXPECT_TRUE(itemsNamed(u"[org.x 4] given up"_qs).isEmpty());
}

} // namespace
} // namespace zenlot
