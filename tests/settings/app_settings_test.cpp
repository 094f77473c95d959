#include "platform/fake_app_service.h"
#include "platform/fake_user_defaults.h"
#include "settings/app_settings.h"

#include <QMetaProperty>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <vector>

namespace zenlot {
namespace {

using Ports = QList<qint64>;

class AppSettingsTest : public testing::Test {
  protected:
    // The values that settings made now would have, by name of the property.
    QVariantMap load() {
        const AppSettings settings(defaults_, loginItem_);
        QVariantMap values;
        const QMetaObject* meta = settings.metaObject();
        for (int index = meta->propertyOffset(); index < meta->propertyCount(); ++index)
            values.insert(QString::fromLatin1(meta->property(index).name()),
                          meta->property(index).read(&settings));
        return values;
    }

    FakeUserDefaults defaults_;
    FakeAppService loginItem_;
};

TEST_F(AppSettingsTest, FreshInstallHasTheDefaultsAndWritesNothing) {
    const QVariantMap loaded = load();
    EXPECT_EQ(loaded.size(), 11);
    for (auto property = loaded.begin(); property != loaded.end(); ++property) {
        const bool isOn = property.key() == QStringLiteral("showInMenuBar");
        EXPECT_EQ(property->toBool(), isOn) << property.key().toStdString();
        EXPECT_TRUE(property->toList().isEmpty()) << property.key().toStdString();
    }
    EXPECT_TRUE(defaults_.writes.empty());
}

TEST_F(AppSettingsTest, LoadsStoredValuesAndWritesThemBackInOrder) {
    const std::vector<FakeUserDefaults::Write> stored{
        {QStringLiteral("showInMenuBar"), qint64{0}},
        {QStringLiteral("showInDock"), QStringLiteral("YES")},
        {QStringLiteral("globalShortcutEnabled"), qint64{2}},
        {QStringLiteral("portMonitoringEnabled"), true},
        {QStringLiteral("conflictMonitoringEnabled"), 0.5},
        {QStringLiteral("monitorIgnoredPorts"), QVariantList{qint64{90}, qint64{8}, qint64{90}}},
        {QStringLiteral("monitorIgnoredApps"), QVariantList{QStringLiteral("b"), QString()}},
        {QStringLiteral("conflictIgnoredPorts"), QVariantList{qint64{3000}}},
        {QStringLiteral("conflictIgnoredApps"), QVariantList()},
        {QStringLiteral("hasCompletedOnboarding"), QStringLiteral("true")}};
    for (const auto& [key, value] : stored)
        defaults_.values.insert(key, *value);
    const QVariantMap loaded = load();
    ASSERT_EQ(defaults_.writes.size(), stored.size());
    for (std::size_t index = 0; index < stored.size(); ++index) {
        const auto& [key, value] = stored[index];
        const bool isList = value->typeId() == QMetaType::QVariantList;
        const QVariant expected = isList ? *value : QVariant(key != stored[0].key);
        EXPECT_EQ(defaults_.writes[index].key, key);
        EXPECT_EQ(defaults_.writes[index].value, expected);
        EXPECT_EQ(isList ? loaded[key].toList() : loaded[key], expected) << key.toStdString();
    }
}

TEST_F(AppSettingsTest, IgnoresAnIllTypedListAsAWhole) {
    const QVariant text = QStringLiteral("3000");
    const QVariant port = qint64{3000};
    const std::vector<QVariant> values{QVariantList{port, text},
                                       QVariantList{text, port},
                                       QVariantList{port, true},
                                       QVariantList{QVariant(3000.0)},
                                       text,
                                       port};
    for (const QVariant& value : values) {
        for (const char* key : {"monitorIgnoredPorts", "conflictIgnoredPorts", "monitorIgnoredApps",
                                "conflictIgnoredApps"}) {
            defaults_.values = {{QString::fromLatin1(key), value}};
            EXPECT_TRUE(load()[QString::fromLatin1(key)].toList().isEmpty()) << key;
            EXPECT_TRUE(defaults_.writes.empty()) << key;
        }
    }
}

TEST_F(AppSettingsTest, WritesOnEveryAssignmentAndNotifiesOfDifferences) {
    AppSettings settings(defaults_, loginItem_);
    const QMetaObject* meta = settings.metaObject();
    for (int index = meta->propertyOffset(); index < meta->propertyCount(); ++index) {
        const QMetaProperty property = meta->property(index);
        const QString key = QString::fromLatin1(property.name());
        QVariant value = QVariant::fromValue(Ports{index, 8});
        if (property.typeId() == QMetaType::Bool)
            value = !property.read(&settings).toBool();
        else if (property.typeId() == QMetaType::QStringList)
            value = QStringList{key};

        QSignalSpy changes(&settings, property.notifySignal());
        defaults_.writes.clear();
        property.write(&settings, value);
        property.write(&settings, value);
        EXPECT_EQ(property.read(&settings), value) << property.name();
        EXPECT_EQ(changes.count(), 1) << property.name();
        if (key == QStringLiteral("launchAtLogin")) {
            EXPECT_TRUE(defaults_.writes.empty());
            EXPECT_EQ(loginItem_.registerCalls, 2);
            continue;
        }
        ASSERT_EQ(defaults_.writes.size(), 2U) << property.name();
        EXPECT_EQ(defaults_.writes[0].key, key);
        EXPECT_EQ(defaults_.writes[0], defaults_.writes[1]);
        EXPECT_EQ(load()[key], value) << property.name();
    }
}

TEST_F(AppSettingsTest, WritesTheValueThatAnObserverAssigned) {
    AppSettings settings(defaults_, loginItem_);
    QObject::connect(&settings, &AppSettings::showInDockChanged, &settings, [&settings] {
        if (settings.showInDock())
            settings.setShowInDock(false);
    });
    settings.setShowInDock(true);
    EXPECT_FALSE(settings.showInDock());
    EXPECT_FALSE(defaults_.boolean(QStringLiteral("showInDock")));
}

TEST_F(AppSettingsTest, LoadingAppliesTheStateOfTheLoginItemAgain) {
    for (const int status : {0, 1, 2, 3, 7}) {
        FakeAppService loginItem;
        loginItem.currentStatus = static_cast<AppServiceStatus>(status);
        EXPECT_EQ(AppSettings(defaults_, loginItem).launchAtLogin(), status == 1);
        EXPECT_EQ(loginItem.registerCalls, status == 1 ? 1 : 0);
        EXPECT_EQ(loginItem.unregisterCalls, status == 1 ? 0 : 1);
    }
    EXPECT_TRUE(defaults_.writes.empty());
}

TEST_F(AppSettingsTest, KeepsTheAssignedValueWhenTheLoginItemIsRefused) {
    AppSettings settings(defaults_, loginItem_);
    loginItem_.refusal = AppServiceError{QStringLiteral("domain"), 1, QStringLiteral("no")};
    settings.setLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(loginItem_.currentStatus, AppServiceStatus::notRegistered);
}

} // namespace
} // namespace zenlot
