// Gathers what the inspector shows of a process beside the listing itself: the snapshot of the
// kernel, then what its bundle says. Reads /proc and the disk, so it belongs on a worker thread; it
// may be called from several at once.
//
//     const LoadedProcess loaded = loader.loadDetails(process);
#pragma once

#include "inventory/origin/origin_collector.h"
#include "inventory/port_process.h"
#include "platform/property_list.h"
#include "platform/running_applications.h"
#include "shell/inspector/process_details.h"
#include "shell/inspector/process_details_collector.h"

#include <QString>

#include <optional>

namespace zenlot {

struct LoadedProcess {
    QString executablePath; // out of the command line
    ProcessDetails details;
    std::optional<Origin> origin; // none when it is not known
};

class ProcessDetailsLoader final {
  public:
    // The references must outlive the loader. Without `origins` no origin is known.
    ProcessDetailsLoader(const ProcessDetailsCollector& collector,
                         const RunningApplications& applications,
                         const PropertyListReader& propertyLists,
                         const OriginCollector* origins = nullptr);

    LoadedProcess loadDetails(const PortProcess& process) const;

  private:
    const ProcessDetailsCollector& collector_;
    const RunningApplications& applications_;
    const PropertyListReader& propertyLists_;
    const OriginCollector* origins_;
};

} // namespace zenlot
