#include "shell/mainwindow/bundle_key_cache.h"

#include <QStringList>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

std::optional<std::string> readKey(const PropertyListReader& reader,
                                   const std::string& bundlePath) {
    const QString key = u"CFBundleIdentifier"_s;
    const PropertyTexts texts =
        reader.texts(QString::fromStdString(bundlePath + "/Contents/Info.plist"), {key});
    const auto identifier = texts.constFind(key);
    if (identifier == texts.constEnd())
        return std::nullopt;
    const QStringList pieces = identifier->split(u'.', Qt::SkipEmptyParts);
    if (pieces.size() < 2)
        return identifier->toStdString();
    return (pieces[0] + u'.' + pieces[1]).toStdString();
}

} // namespace

BundleKeyCache::BundleKeyCache(const PropertyListReader& reader) : reader_(reader) {}

std::string BundleKeyCache::bundleGroupKey(const std::string& bundlePath) {
    const std::lock_guard lock(mutex_);
    auto [key, isNew] = keys_.try_emplace(bundlePath);
    if (isNew)
        key->second = readKey(reader_, bundlePath);
    return key->second.value_or(bundlePath);
}

} // namespace zenlot
