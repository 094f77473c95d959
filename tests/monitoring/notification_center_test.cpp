#include "monitoring/notification_center.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace zenlot {
namespace {

using testing::ElementsAre;

TEST(NotificationCenterTest, HandlersMayObservePostAndDestroyDuringAPost) {
    std::vector<std::string> heard;
    auto context = std::make_unique<QObject>();
    auto center = std::make_unique<NotificationCenter>();
    const auto nothing = [] {};
    const auto observe = [&](const QString& name, const std::string& who, const auto& act) {
        center->observe(name, context.get(), [&heard, who, act](const UserInfo& info) {
            heard.push_back(who + std::to_string(info.integer(kPortKey).value_or(0)));
            act();
        });
    };
    observe(kPortsUpdated, "out", [&] {
        observe(kPortsUpdated, "late", nothing);
        center->post(kConflictsUpdated, {{kPortKey, QString()}}); // counts as no integer
    });
    observe(kConflictsUpdated, "in", nothing);
    observe(kPortsUpdated, "last", nothing);
    center->post(kPortsUpdated, {{kPortKey, 8}});
    center->post(kPortsUpdated, {{kPortKey, 9}});
    EXPECT_THAT(heard, ElementsAre("out8", "in0", "last8", "out9", "in0", "last9", "late9"));

    heard.clear();
    context = std::make_unique<QObject>();
    observe(kPortsUpdated, "first", [&] { context = std::make_unique<QObject>(); });
    observe(kPortsUpdated, "never", nothing);
    center->post(kPortsUpdated);
    observe(kPortsUpdated, "second", [&] { center.reset(); });
    observe(kPortsUpdated, "never", nothing);
    center->post(kPortsUpdated);
    EXPECT_THAT(heard, ElementsAre("first0", "second0"));
}

} // namespace
} // namespace zenlot
