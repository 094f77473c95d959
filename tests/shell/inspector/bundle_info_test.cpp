#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "shell/inspector/bundle_info.h"

#include <gtest/gtest.h>

#include <utility>

namespace zenlot {
namespace {

class BundleInfoTest : public testing::Test {
  protected:
    BundleInfoTest() {
        propertyLists.files = {
            {u"/Applications/A.app/Contents/Info.plist"_qs, dictionary(u"org.a"_qs)},
            {u"/Applications/A.app/Contents/Frameworks/B.app/Contents/Info.plist"_qs,
             dictionary(u"org.b"_qs)},
            {u"/opt/odd.app/Contents/Info.plist"_qs,
             {{u"CFBundleIdentifier"_qs, 5}, {u"CFBundleVersion"_qs, u"7"_qs}}}};
    }

    static QVariantMap dictionary(const QString& identifier) {
        return {{u"CFBundleIdentifier"_qs, identifier},
                {u"CFBundleShortVersionString"_qs, u"1.2"_qs},
                {u"CFBundleVersion"_qs, u"34"_qs}};
    }

    BundleInfo lookUp(const QString& path, qint64 pid = 7) {
        return lookUpBundleInfo(path, pid, applications, propertyLists);
    }

    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
};

TEST_F(BundleInfoTest, InnermostBundleAroundTheProgram) {
    const BundleInfo a{u"org.a"_qs, u"1.2"_qs, u"34"_qs};
    const BundleInfo b{u"org.b"_qs, u"1.2"_qs, u"34"_qs};
    const std::pair<QString, BundleInfo> cases[]{
        {u"/Applications/A.app/Contents/MacOS/a"_qs, a},
        {u"/Applications/A.app/Contents/Frameworks/B.app/Contents/MacOS/B"_qs, b},
        {u"/opt/odd.app/bin/odd"_qs, {QString(), QString(), u"7"_qs}},
        {u"/opt/missing.app/bin/x"_qs, {}},
        {QString(), {}}};
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(lookUp(path), expected) << path.toStdString();
}

TEST_F(BundleInfoTest, RunningApplicationStandsAboveThePath) {
    const QString path = u"/Applications/A.app/Contents/MacOS/a"_qs;
    const auto running = [](std::optional<QString> identifier, std::optional<QString> bundle) {
        RunningApplication application;
        application.bundleIdentifier = std::move(identifier);
        application.bundlePath = std::move(bundle);
        return application;
    };
    applications.add(7, running(u"org.running"_qs, u"/Applications/A.app/"_qs));
    EXPECT_EQ(lookUp(path), (BundleInfo{u"org.running"_qs, u"1.2"_qs, u"34"_qs}));
    applications.add(7, running(std::nullopt, u"/Applications/A.app"_qs));
    EXPECT_EQ(lookUp(path), (BundleInfo{QString(), u"1.2"_qs, u"34"_qs}));
    const int reads = propertyLists.reads;
    applications.add(7, running(u"org.running"_qs, std::nullopt));
    EXPECT_EQ(lookUp(path), (BundleInfo{u"org.running"_qs, QString(), QString()}));
    EXPECT_EQ(propertyLists.reads, reads);
    EXPECT_EQ(lookUp(path, 8).bundleID, u"org.a"_qs) << "another process";
}

} // namespace
} // namespace zenlot
