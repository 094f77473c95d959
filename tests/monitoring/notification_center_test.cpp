#include "monitoring/notification_center.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class NotificationCenterTest : public testing::Test {
  protected:
    NotificationCenter::Handler record(const std::string& who) {
        return [this, who](const UserInfo&) { heard.push_back(who); };
    }

    std::vector<std::string> heard;
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::unique_ptr<NotificationCenter> center = std::make_unique<NotificationCenter>();
};

TEST_F(NotificationCenterTest, ReachesTheObserversOfTheNameInOrder) {
    center->observe(kPortsUpdated, context.get(), record("first"));
    center->observe(kConflictsUpdated, context.get(), record("other"));
    center->observe(kPortsUpdated, context.get(), record("second"));
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("first", "second"));
}

TEST_F(NotificationCenterTest, CarriesIntegersAndStringsWithoutMixingThem) {
    UserInfo received;
    center->observe(kConflictDetected, context.get(),
                    [&received](const UserInfo& info) { received = info; });
    center->post(kConflictDetected, {{kPortKey, 3000}, {kProcessNameKey, u"node"_s}});
    EXPECT_EQ(received.integer(kPortKey), 3000);
    EXPECT_EQ(received.string(kProcessNameKey), u"node"_s);
    EXPECT_EQ(received.string(kPortKey), std::nullopt);
    EXPECT_EQ(received.integer(kProcessNameKey), std::nullopt);
    EXPECT_EQ(received.integer(kPidKey), std::nullopt);
}

TEST_F(NotificationCenterTest, HandlersMayObserveAndPostDuringAPost) {
    center->observe(kPortsUpdated, context.get(), [this](const UserInfo&) {
        heard.emplace_back("outer");
        center->observe(kPortsUpdated, context.get(), record("late"));
        center->post(kConflictsUpdated);
    });
    center->observe(kConflictsUpdated, context.get(), record("inner"));
    center->observe(kPortsUpdated, context.get(), record("last"));
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("outer", "inner", "last"));
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("outer", "inner", "last", "outer", "inner", "last", "late"));
}

TEST_F(NotificationCenterTest, RegistrationsEndWithTheirContextEvenDuringAPost) {
    auto other = std::make_unique<QObject>();
    center->observe(kPortsUpdated, context.get(),
                    [this, &other, copy = std::string("self")](const UserInfo&) {
                        context.reset();
                        other.reset();
                        heard.push_back(copy);
                    });
    center->observe(kPortsUpdated, other.get(), record("other"));
    center->post(kPortsUpdated);
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("self"));
}

TEST_F(NotificationCenterTest, HandlersMayDestroyTheCenter) {
    center->observe(kPortsUpdated, context.get(), [this](const UserInfo&) {
        center.reset();
        heard.emplace_back("destroyer");
    });
    center->observe(kPortsUpdated, context.get(), record("second"));
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("destroyer"));
}

} // namespace
} // namespace zenlot
