// Somebody with settings, and with a background monitor, all made up.
#pragma once

#include "monitoring/launch_agent_installer.h"
#include "platform/fake_app_service.h"
#include "platform/fake_background_items_settings.h"
#include "platform/fake_system_log.h"
#include "platform/fake_user_defaults.h"
#include "settings/app_settings.h"

namespace zenlot {

struct SampleUser {
    FakeUserDefaults defaults;
    FakeAppService loginItem;
    FakeAppService monitor;
    FakeSystemLog systemLog;
    FakeBackgroundItemsSettings loginItems;
    AppSettings settings{defaults, loginItem};
    LaunchAgentInstaller installer{monitor, systemLog, QStringLiteral("/opt/zenlot")};

    void forbidTheMonitor() { monitor.currentStatus = AppServiceStatus::requiresApproval; }
};

} // namespace zenlot
