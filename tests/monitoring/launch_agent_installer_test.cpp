#include "monitoring/launch_agent_installer.h"
#include "platform/fake_app_service.h"
#include "platform/fake_system_log.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using enum AppServiceStatus;

struct LaunchAgentInstallerTest : testing::Test {
    FakeAppService service;
    FakeSystemLog log;
    LaunchAgentInstaller installer{service, log, u"/opt/zenlot"_s};
};

// The settings may be looked at, and monitoring switched off, while it is registered again.
TEST_F(LaunchAgentInstallerTest, ARefreshIsNoChoiceOfTheUsers) {
    service.currentStatus = enabled;
    service.statusAfterRegistering = enabled;
    installer.beginRefresh();
    AgentState state = installer.state().result();
    EXPECT_EQ(state.status, notRegistered);
    EXPECT_TRUE(state.isInstalled());
    installer.finishRefresh();
    EXPECT_TRUE(installer.state().result().isEnabled());
    EXPECT_EQ(service.registerCalls, 1);

    installer.beginRefresh();
    EXPECT_FALSE(installer.uninstall().result());
    EXPECT_FALSE(installer.state().result().isInstalled());
    installer.finishRefresh();
    installer.state().waitForFinished();
    EXPECT_EQ(service.registerCalls, 1);
}

} // namespace
} // namespace zenlot
