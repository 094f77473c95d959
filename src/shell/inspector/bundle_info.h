// What the application bundle of a process says of itself.
#pragma once

#include "platform/property_list.h"
#include "platform/running_applications.h"

#include <QString>

namespace zenlot {

struct BundleInfo {
    QString bundleID;
    QString bundleShortVersion;
    QString bundleVersion;

    friend bool operator==(const BundleInfo&, const BundleInfo&) = default;
};

// Of the running application with this pid; when it is none, of the innermost bundle around the
// executable. What can't be found is empty. Reads the disk.
BundleInfo lookUpBundleInfo(const QString& executablePath, qint64 pid,
                            const RunningApplications& applications,
                            const PropertyListReader& propertyLists);

} // namespace zenlot
