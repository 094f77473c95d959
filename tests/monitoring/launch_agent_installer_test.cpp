#include "monitoring/launch_agent_installer.h"
#include "platform/fake_app_service.h"
#include "platform/fake_system_log.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using enum AppServiceStatus;

using Refusal = std::optional<AppServiceError>;

const QString kBlocked =
    u"Zenlot is blocked from running in the background. Open System Settings → General → Login "
    u"Items & Extensions and turn Zenlot back on under \"Allow in the Background\", then click "
    u"Re-check."_s;
const QString kFailed = u"[Zenlot] SMAppService.register() FAILED: domain="_s;
const QString kDone = u"[Zenlot] SMAppService.register() succeeded, post-status="_s;
const QString kNotAsked = u"[Zenlot] SMAppService status is .requiresApproval before register — "
                          u"needs user approval"_s;
const QString kDomain = u"SMAppServiceErrorDomain"_s;

struct LaunchAgentInstallerTest : testing::Test {
    FakeAppService service;
    FakeSystemLog log;
    LaunchAgentInstaller installer{service, log, u"/opt/zenlot"_s};
};

// Status before, what the service answers, status after, what the user reads, last line of the log.
TEST_F(LaunchAgentInstallerTest, InstallsOrTellsWhyNot) {
    const std::tuple<AppServiceStatus, Refusal, AppServiceStatus, QString, QString> cases[] = {
        {notRegistered, {}, enabled, {}, kDone + u'1'},
        {notRegistered, {}, requiresApproval, kBlocked, kDone + u'2'},
        {requiresApproval, {}, enabled, kBlocked, kNotAsked},
        {notFound,
         {{kDomain, 1, u"no"_s}},
         enabled,
         kBlocked,
         kFailed + kDomain + u" code=1 desc=no underlying={} post-status=3"_s},
        {notRegistered,
         {{kDomain, 2, u"no"_s}},
         enabled,
         u"[SMAppServiceErrorDomain 2] no"_s,
         kFailed + kDomain + u" code=2 desc=no underlying={} post-status=0"_s}};
    for (const auto& [before, refusal, after, description, lastLine] : cases) {
        log.messages.clear();
        service.registerCalls = 0;
        service.currentStatus = before;
        service.refusal = refusal;
        service.statusAfterRegistering = after;
        const std::optional<InstallError> error = installer.install().result();
        EXPECT_EQ(error ? error->description() : QString(), description);
        EXPECT_EQ(error == InstallError::requiresApproval(), description == kBlocked);
        EXPECT_EQ(service.registerCalls, before == requiresApproval ? 0 : 1);
        const QString first = u"[Zenlot] SMAppService status before register: %1"_s;
        EXPECT_EQ(log.messages, (QStringList{first.arg(static_cast<int>(before)),
                                             u"[Zenlot] Bundle path: /opt/zenlot"_s, lastLine}));
        EXPECT_EQ(installer.uninstall().result(), refusal);
    }
}

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
