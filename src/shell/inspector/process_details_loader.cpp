#include "shell/inspector/process_details_loader.h"

#include "inventory/process_names.h"
#include "shell/inspector/bundle_info.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

// Of the servers on the port the one that the process belongs to; where it is not to be seen, the
// one that isn't either.
std::optional<Origin> originOf(const PortProcess& process, const std::vector<Origin>& origins) {
    const auto found = std::ranges::find_if(origins, [&process](const Origin& origin) {
        return origin.process.pid == process.pid ||
               std::ranges::find(origin.owners, process.pid, &ProcessIdentity::pid) !=
                   origin.owners.end();
    });
    return found == origins.end() ? std::nullopt : std::optional(*found);
}

} // namespace

ProcessDetailsLoader::ProcessDetailsLoader(const ProcessDetailsCollector& collector,
                                           const RunningApplications& applications,
                                           const PropertyListReader& propertyLists,
                                           const OriginCollector* origins)
    : collector_(collector), applications_(applications), propertyLists_(propertyLists),
      origins_(origins) {}

LoadedProcess ProcessDetailsLoader::loadDetails(const PortProcess& process) const {
    LoadedProcess loaded;
    loaded.details = collector_.collectProcessDetails(process.pid);
    loaded.executablePath = QString::fromStdString(resolveCommandExecutable(process.fullCommand));
    BundleInfo bundle =
        lookUpBundleInfo(loaded.executablePath, process.pid, applications_, propertyLists_);
    loaded.details.bundleID = std::move(bundle.bundleID);
    loaded.details.bundleShortVersion = std::move(bundle.bundleShortVersion);
    loaded.details.bundleVersion = std::move(bundle.bundleVersion);
    if (origins_ && isValidPort(process.port))
        loaded.origin =
            originOf(process, origins_->originsOnPort(static_cast<std::uint16_t>(process.port)));
    return loaded;
}

} // namespace zenlot
