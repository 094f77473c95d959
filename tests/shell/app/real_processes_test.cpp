// From each place where a process may be ended, with real processes: the one that was shown is, and
// one that got its id since is not.
#include "inventory/linux/linux_process_pinner.h"
#include "inventory/linux/linux_process_tables.h"
#include "platform/fake_application_windows.h"
#include "platform/fake_global_shortcut.h"
#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "platform/fake_status_bar.h"
#include "shell/mainwindow/content_view_model.h"
#include "shell/menubar/app_delegate.h"
#include "shell/model/app_model.h"
#include "support/child_process.h"
#include "support/listener.h"
#include "support/sample_inventory.h"

#include <QCoroTask>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPatience = 60'000;

// A process that listens on a port as the only one.
struct Server {
    std::uint16_t port;
    ChildProcess process;
};

Server startServer() {
    const Listener listener;
    return {listener.port(), ChildProcess()};
}

// Everything that ends processes, over the machine as it is. Nobody is told of their ends, so that
// what was shown stays. The end of the object waits for what it was asked to do.
class Program : SampleAlerts<LinuxProcessTables, LinuxProcessPinner> {
  public:
    Program() {
        delegate.configure(settings, appModel);
        QCoro::waitFor(alerts->configure(settings));
    }

    // Shows whoever listens on the port: in the window with the question about it, in an alert and
    // in the menu. True when each of them offers the end, false when none does.
    bool show(std::uint16_t port) {
        model.setPortInput(QString::number(port));
        model.performCheck();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !model.isChecking(); }, kPatience));
        EXPECT_TRUE(model.hasSelection());
        model.requestForceQuit();
        if (!model.hasSelection())
            return false;
        const PortProcess& row = *model.selectedProcess();
        alerts->notifyConflict(port, u"node"_s, {row.target().process, row.obstacle});
        Q_EMIT notifications.conflictDetected(
            {port, row.target().process, u"node"_s, u"node"_s, row.obstacle});
        const bool isInAlert = center.requests.back().content.actions.size() == 3;
        EXPECT_EQ(isInAlert, model.isConfirming());
        EXPECT_EQ(isInAlert, commandInMenu() != nullptr);
        return isInAlert;
    }

    // What the user may then say.
    void endInWindow() {
        model.setPortInput(u"1"_s); // what is selected by now was not asked about
        model.confirmForceQuit();
    }
    void endInAlert() {
        center.respond(center.requests.back(), PortNotificationManager::killActionID);
    }
    void endInMenu() { commandInMenu()(); }

  private:
    std::function<void()> commandInMenu() const {
        for (const Command& entry : bar.menu) {
            if (entry.title == u"Kill node"_s)
                return entry.run;
        }
        return nullptr;
    }

    FakeStatusBar bar;
    FakeGlobalShortcut shortcut;
    FakeApplicationWindows windows;
    AppModel appModel;
    AppDelegate delegate{{inventory, notifications, bar, shortcut, windows}, {}};
    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
    BundleKeyCache bundleKeys{propertyLists};
    ApplicationCache applicationCache{applications};
    ContentViewModel model{
        {inventory, notifications, applicationCache, bundleKeys, appModel, settings, defaults}, {}};
};

struct Place {
    const char* name;
    void (Program::*end)();
};

class RealProcessesTest : public testing::TestWithParam<Place> {
  protected:
    std::optional<Program> program{std::in_place};
};

TEST_P(RealProcessesTest, TheProcessThatWasShownIsEnded) {
    const Server server = startServer();
    ASSERT_TRUE(program->show(server.port));
    ((*program).*GetParam().end)();
    EXPECT_EQ(server.process.waitForSignal(), SIGKILL);
}

TEST_P(RealProcessesTest, AStrangerWithItsIdLives) {
    Server server = startServer();
    ASSERT_TRUE(program->show(server.port));
    const pid_t pid = server.process.pid();
    server.process.endAndLetTimePass();
    const std::optional<ChildProcess> stranger = ChildProcess::withId(pid);
    if (!stranger)
        GTEST_SKIP() << "the kernel does not give an id again at will here";
    ((*program).*GetParam().end)();
    program.reset();
    EXPECT_TRUE(stranger->wasLeftAlone());
}

INSTANTIATE_TEST_SUITE_P(From, RealProcessesTest,
                         testing::Values(Place{"Window", &Program::endInWindow},
                                         Place{"Alert", &Program::endInAlert},
                                         Place{"Menu", &Program::endInMenu}),
                         [](const auto& place) { return std::string(place.param.name); });

} // namespace
} // namespace zenlot
