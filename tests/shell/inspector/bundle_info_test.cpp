#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "shell/inspector/bundle_info.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class BundleInfoTest : public testing::Test {
  protected:
    BundleInfoTest() {
        propertyLists.files = {
            {u"/Applications/A.app/Contents/Info.plist"_s, dictionary(u"org.a"_s)},
            {u"/Applications/A.app/Contents/Frameworks/B.app/Contents/Info.plist"_s,
             dictionary(u"org.b"_s)},
            {u"/opt/odd.app/Contents/Info.plist"_s, {{u"CFBundleVersion"_s, u"7"_s}}}};
    }

    static PropertyTexts dictionary(const QString& identifier) {
        return {{u"CFBundleIdentifier"_s, identifier},
                {u"CFBundleShortVersionString"_s, u"1.2"_s},
                {u"CFBundleVersion"_s, u"34"_s}};
    }

    BundleInfo lookUp(const QString& path, qint64 pid = 7) {
        return lookUpBundleInfo(path, pid, applications, propertyLists);
    }

    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
};

TEST_F(BundleInfoTest, InnermostBundleAroundTheProgram) {
    EXPECT_EQ(lookUp(u"/Applications/A.app/Contents/Frameworks/B.app/Contents/MacOS/B"_s),
              (BundleInfo{u"org.b"_s, u"1.2"_s, u"34"_s}));
    EXPECT_EQ(lookUp(u"/opt/odd.app/bin/odd"_s), (BundleInfo{QString(), QString(), u"7"_s}));
    EXPECT_EQ(lookUp(u"/opt/missing.app/bin/x"_s), BundleInfo());
}

TEST_F(BundleInfoTest, RunningApplicationStandsAboveThePath) {
    const QString path = u"/Applications/A.app/Contents/MacOS/a"_s;
    const auto running = [](std::optional<QString> identifier, std::optional<QString> bundle) {
        RunningApplication application;
        application.bundleIdentifier = std::move(identifier);
        application.bundlePath = std::move(bundle);
        return application;
    };
    applications.add(7, running(u"org.running"_s, u"/Applications/A.app/"_s));
    EXPECT_EQ(lookUp(path), (BundleInfo{u"org.running"_s, u"1.2"_s, u"34"_s}));
    applications.add(7, running(std::nullopt, u"/Applications/A.app"_s));
    EXPECT_EQ(lookUp(path), (BundleInfo{QString(), u"1.2"_s, u"34"_s}));
    const int reads = propertyLists.reads;
    applications.add(7, running(u"org.running"_s, std::nullopt));
    EXPECT_EQ(lookUp(path), (BundleInfo{u"org.running"_s, QString(), QString()}));
    EXPECT_EQ(propertyLists.reads, reads);
    EXPECT_EQ(lookUp(path, 8).bundleID, u"org.a"_s) << "another process";
}

} // namespace
} // namespace zenlot
