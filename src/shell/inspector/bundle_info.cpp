#include "shell/inspector/bundle_info.h"

#include "inventory/process_names.h"

#include <QDir>

#include <optional>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kBundleIdentifierKey = u"CFBundleIdentifier"_s;
const QString kBundleShortVersionKey = u"CFBundleShortVersionString"_s;
const QString kBundleVersionKey = u"CFBundleVersion"_s;

} // namespace

BundleInfo lookUpBundleInfo(const QString& executablePath, qint64 pid,
                            const RunningApplications& applications,
                            const PropertyListReader& propertyLists) {
    const std::optional<RunningApplication> application = applications.applicationWithPid(pid);
    std::optional<QString> bundlePath;
    if (application) {
        bundlePath = application->bundlePath;
    } else if (const auto path = enclosingAppBundlePath(executablePath.toStdString())) {
        bundlePath = QString::fromStdString(*path);
    }

    PropertyTexts texts;
    if (bundlePath)
        texts =
            propertyLists.texts(QDir(*bundlePath).filePath(u"Contents/Info.plist"_s),
                                {kBundleIdentifierKey, kBundleShortVersionKey, kBundleVersionKey});
    return {application ? application->bundleIdentifier.value_or(QString())
                        : texts.value(kBundleIdentifierKey),
            texts.value(kBundleShortVersionKey), texts.value(kBundleVersionKey)};
}

} // namespace zenlot
