// An inspector's view model over a fake machine, whose answers can be held back.
#pragma once

#include "inventory/fake_process_inspector.h"
#include "inventory/origin/fake_origin_sources.h"
#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "shell/inspector/process_detail_view_model.h"

#include <QTest>

#include <chrono>
#include <latch>
#include <map>

namespace zenlot {

class GatedInspector final : public ProcessInspector {
  public:
    FakeProcessInspector machine;
    std::map<ProcessId, std::latch> gates; // a process with a gate is inspected once it is open

    ProcessFacts inspect(ProcessId pid) const override {
        const auto gate = gates.find(pid);
        if (gate != gates.end())
            gate->second.wait();
        return machine.inspect(pid);
    }
    std::uint64_t physicalMemoryBytes() const override { return machine.physicalMemoryBytes(); }
};

struct InspectorFixture {
    static PortProcess row(std::int64_t pid, const std::string& command = "/opt/server") {
        return {Uuid::random(), pid,    "server", "Server", "501",
                command,        "TCP4", "LISTEN", "*:8080", 8080};
    }

    bool waitForDetails() {
        return QTest::qWaitFor([this] { return viewModel.hasDetails(); }, 10'000);
    }

    GatedInspector inspector;
    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
    ProcessDetailsCollector collector{
        inspector,
        [] { return std::chrono::system_clock::time_point(std::chrono::seconds(1'741'162'051)); },
        QLocale(QLocale::English), QTimeZone::utc()};
    FakeOriginSources originSources;
    OriginCollector origins{originSources};
    ProcessDetailsLoader loader{collector, applications, propertyLists, &origins};
    ProcessDetailViewModel viewModel{loader};
};

} // namespace zenlot
