// Somebody with settings, and with a background monitor, all made up.
#pragma once

#include "monitoring/launch_agent_installer.h"
#include "platform/fake_app_service.h"
#include "platform/fake_system_log.h"
#include "platform/fake_user_defaults.h"
#include "settings/app_settings.h"

#include <QCoreApplication>

namespace zenlot {

struct SampleUser {
    FakeUserDefaults defaults;
    FakeAppService loginItem;
    FakeAppService monitor;
    FakeSystemLog systemLog;
    AppSettings settings{defaults, loginItem};
    LaunchAgentInstaller installer{monitor, systemLog, QStringLiteral("/opt/zenlot")};

    // Where the user may allow the monitor.
    int loginItemsOpened{0};
    std::function<void()> openLoginItems = [this] { ++loginItemsOpened; };

    // Until what was asked of the monitor is done, and told.
    void settle() {
        installer.state().waitForFinished();
        QCoreApplication::processEvents();
    }

    void forbidTheMonitor() { monitor.currentStatus = AppServiceStatus::requiresApproval; }
};

} // namespace zenlot
