// The machine of the screenshots: processes that listen, their icons and what the inspector can
// learn of them, with the view models of the main window over it. Nothing here is real but the
// current user.
#pragma once

#include "inventory/fake_process_inspector.h"
#include "inventory/origin/fake_managers.h"
#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "platform/fake_workspace.h"
#include "shell/inspector/process_detail_view_model.h"
#include "shell/mainwindow/content_view_model.h"
#include "support/sample_inventory.h"

#include <QColor>
#include <QTemporaryDir>

namespace zenlot {

class SampleMachine final {
  public:
    SampleMachine();

    // A process of the current user, or of the system, that listens on these ports.
    void addProcess(ProcessId pid, bool isOwn, const std::string& path,
                    const std::vector<std::uint16_t>& ports);

    // What the window says of the origins of its servers.
    void addOrigins();

    // Two applications, one of them with several ports.
    void addApplications();

    // So many processes with two listeners each, and nothing else.
    void becomeCrowded(int processes);

    const FakeRunningApplications& runningApplications() const { return applications_; }
    const FakeWorkspace& workspace() const { return workspace_; }
    PortInventory& inventory() { return machine_.inventory; }
    ContentViewModel& content() { return content_; }
    ProcessDetailViewModel& inspector() { return inspector_; }

  private:
    // An application with a picture of its own; the first of its processes is its program's.
    void addApplication(const QString& name, const QString& identifier, const QColor& color,
                        const std::vector<ProcessId>& processes);

    QTemporaryDir pictures_;
    SampleInventory<> machine_;
    SampleUser user_;
    FakeProcessInspector processes_;
    FakeRunningApplications applications_;
    FakePropertyListReader propertyLists_;
    FakeWorkspace workspace_;
    NotificationCenter notifications_;
    BundleKeyCache bundleKeys_{propertyLists_};
    ApplicationCache applicationCache_{applications_};
    AppModel appModel_;
    ProcessDetailsCollector collector_;
    ProcessDetailsLoader loader_{collector_, applications_, propertyLists_, &machine_.origins};
    FakeManagers managers_;
    PortStopper stopper_{
        {machine_.originSources, machine_.origins, managers_, managers_, managers_}};
    ContentViewModel content_;
    ProcessDetailViewModel inspector_{loader_};
};

} // namespace zenlot
