#include "shell/mainwindow/port_grouping.h"

#include <QCollator>
#include <QCoreApplication>

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

// An installed application stands for its group rather than a copy of it elsewhere.
bool isInstalled(std::string_view bundlePath) {
    return bundlePath.starts_with("/Applications/") ||
           bundlePath.starts_with("/System/Applications/");
}

std::string_view bundleName(std::string_view bundlePath) {
    bundlePath.remove_prefix(bundlePath.rfind('/') + 1);
    return bundlePath.substr(0, bundlePath.rfind('.'));
}

void sortByName(std::vector<AppPortGroup>& groups) {
    const QCollator collator;
    std::vector<std::pair<QCollatorSortKey, AppPortGroup>> sorted;
    sorted.reserve(groups.size());
    for (AppPortGroup& group : groups) {
        QCollatorSortKey key = collator.sortKey(groupDisplayName(group));
        sorted.emplace_back(std::move(key), std::move(group));
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    groups.clear();
    for (auto& [key, group] : sorted)
        groups.push_back(std::move(group));
}

} // namespace

QString groupDisplayName(const AppPortGroup& group) {
    if (!group.name.empty())
        return QString::fromStdString(group.name);
    if (group.bundlePath) {
        const std::string_view name = bundleName(*group.bundlePath);
        return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    }
    if (group.ports.empty())
        return {};
    const OccupiedPort& first = group.ports.front();
    return first.displayName.empty()
               ? QCoreApplication::translate("AppPortGroup", "Port %1").arg(first.port)
               : QString::fromStdString(first.displayName);
}

std::vector<AppPortGroup> groupPorts(std::vector<OccupiedPort> ports, BundleKeyCache& bundleKeys,
                                     ApplicationCache& applications) {
    std::map<std::string, AppPortGroup> bundles;
    std::vector<OccupiedPort> single;
    std::set<std::int64_t> bundledPorts;
    for (OccupiedPort& port : ports) {
        const ApplicationCache::Answer answer = applications.of(port);
        if (answer.executablePath)
            port.executablePath = *answer.executablePath;
        AppPortGroup found{port.enclosingAppBundlePath(), {port}};
        std::string key;
        if (found.bundlePath) {
            key = bundleKeys.bundleGroupKey(*found.bundlePath);
        } else if (answer.owner) {
            key = answer.owner->key.toStdString();
            found.bundlePath = key;
            found.name = answer.owner->name.toStdString();
            found.icon = answer.owner->icon.toStdString();
        }
        if (!found.bundlePath) {
            single.push_back(port);
            continue;
        }
        bundledPorts.insert(port.port);
        const auto [entry, isNew] = bundles.try_emplace(key, found);
        if (isNew)
            continue;
        AppPortGroup& group = entry->second;
        if (isInstalled(*found.bundlePath))
            group.bundlePath = found.bundlePath;
        if (std::ranges::find(group.ports, port.port, &OccupiedPort::port) == group.ports.end())
            group.ports.push_back(port);
    }

    std::vector<AppPortGroup> groups;
    for (auto& [key, group] : bundles) {
        std::ranges::stable_sort(group.ports, {}, &OccupiedPort::port);
        groups.push_back(std::move(group));
    }
    for (OccupiedPort& port : single) {
        if (!bundledPorts.contains(port.port))
            groups.push_back({std::nullopt, {std::move(port)}});
    }
    sortByName(groups);
    return groups;
}

} // namespace zenlot
