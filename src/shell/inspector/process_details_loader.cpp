#include "shell/inspector/process_details_loader.h"

#include "inventory/process_names.h"
#include "shell/inspector/bundle_info.h"

#include <utility>

namespace zenlot {

ProcessDetailsLoader::ProcessDetailsLoader(const ProcessDetailsCollector& collector,
                                           const RunningApplications& applications,
                                           const PropertyListReader& propertyLists)
    : collector_(collector), applications_(applications), propertyLists_(propertyLists) {}

LoadedProcess ProcessDetailsLoader::loadDetails(const PortProcess& process) const {
    LoadedProcess loaded;
    loaded.details = collector_.collectProcessDetails(process.pid);
    loaded.executablePath = QString::fromStdString(resolveCommandExecutable(process.fullCommand));
    BundleInfo bundle =
        lookUpBundleInfo(loaded.executablePath, process.pid, applications_, propertyLists_);
    loaded.details.bundleID = std::move(bundle.bundleID);
    loaded.details.bundleShortVersion = std::move(bundle.bundleShortVersion);
    loaded.details.bundleVersion = std::move(bundle.bundleVersion);
    return loaded;
}

} // namespace zenlot
