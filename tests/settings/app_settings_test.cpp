#include "platform/fake_app_service.h"
#include "platform/fake_user_defaults.h"
#include "settings/app_settings.h"

#include <QMetaProperty>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class AppSettingsTest : public testing::Test {
  protected:
    FakeUserDefaults defaults_;
    FakeAppService loginItem_;
};

TEST_F(AppSettingsTest, LoadsWhatIsStoredAndOnlyThat) {
    defaults_.values = {{u"showInDock"_s, u"YES"_s},
                        {u"monitorIgnoredPorts"_s, QVariantList{90LL, 8LL, 90LL}},
                        {u"monitorIgnoredApps"_s, QVariantList{u"b"_s, QString()}},
                        {u"conflictIgnoredPorts"_s, QVariantList{3000LL, u"3000"_s}}};
    AppSettings settings(defaults_, loginItem_);
    settings.load();
    EXPECT_TRUE(settings.showInMenuBar());
    EXPECT_TRUE(settings.showInDock());
    EXPECT_FALSE(settings.portMonitoringEnabled());
    EXPECT_EQ(settings.monitorIgnoredPorts(), (QList<qint64>{90, 8, 90}));
    EXPECT_EQ(settings.monitorIgnoredApps(), (QStringList{u"b"_s, QString()}));
    EXPECT_TRUE(settings.conflictIgnoredPorts().isEmpty());
    EXPECT_EQ(defaults_.writes.size(), 3U);
}

TEST_F(AppSettingsTest, WritesOnEveryAssignmentAndNotifiesOfDifferences) {
    AppSettings settings(defaults_, loginItem_);
    const QMetaObject* meta = settings.metaObject();
    for (int index = meta->propertyOffset(); index < meta->propertyCount(); ++index) {
        const QMetaProperty property = meta->property(index);
        QVariant value = QVariant::fromValue(QList<qint64>{index, 8});
        if (property.typeId() == QMetaType::Bool)
            value = !property.read(&settings).toBool();
        else if (property.typeId() == QMetaType::QStringList)
            value = QStringList{QString::number(index)};
        QSignalSpy changes(&settings, property.notifySignal());
        defaults_.writes.clear();
        property.write(&settings, value);
        property.write(&settings, value);
        EXPECT_EQ(property.read(&settings), value) << property.name();
        EXPECT_EQ(changes.count(), 1) << property.name();
        if (property.name() != QByteArray("launchAtLogin")) {
            ASSERT_EQ(defaults_.writes.size(), 2U) << property.name();
            EXPECT_EQ(defaults_.writes[1].key, QString::fromLatin1(property.name()));
        }
        AppSettings next(defaults_, loginItem_);
        next.load();
        EXPECT_EQ(property.read(&next), value) << property.name();
    }
}

TEST_F(AppSettingsTest, LoginItemFollowsTheDesktopAndEachAssignment) {
    for (const int status : {0, 1, 2, 3, 7}) {
        loginItem_.currentStatus = static_cast<AppServiceStatus>(status);
        AppSettings settings(defaults_, loginItem_);
        settings.load();
        EXPECT_EQ(settings.launchAtLogin(), status == 1);
    }
    EXPECT_EQ(loginItem_.unregisterCalls, 4);
    loginItem_.refusal = AppServiceError{u"domain"_s, 1, u"no"_s};
    AppSettings settings(defaults_, loginItem_);
    settings.setLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    EXPECT_EQ(loginItem_.registerCalls, 2);
    EXPECT_TRUE(defaults_.writes.empty());
}

} // namespace
} // namespace zenlot
