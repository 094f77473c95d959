#include "shell/inspector/bundle_info.h"

#include "inventory/process_names.h"

#include <QDir>

#include <optional>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString textOf(const QVariantMap& dictionary, const char* key) {
    return textIn(dictionary, QLatin1String(key)).value_or(QString());
}

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

    QVariantMap dictionary;
    if (bundlePath) {
        const QString file = QDir(*bundlePath).filePath(u"Contents/Info.plist"_s);
        dictionary = propertyLists.dictionary(file).value_or(QVariantMap());
    }
    return {application ? application->bundleIdentifier.value_or(QString())
                        : textOf(dictionary, "CFBundleIdentifier"),
            textOf(dictionary, "CFBundleShortVersionString"),
            textOf(dictionary, "CFBundleVersion")};
}

} // namespace zenlot
