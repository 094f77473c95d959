// The key by which the bundles of one maker are grouped: the first two pieces of the bundle's
// identifier. Each bundle's property list is read once, and its key kept until the program ends.
// Any thread may ask.
#pragma once

#include "platform/property_list.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace zenlot {

class BundleKeyCache {
  public:
    // `reader` must outlive the cache.
    explicit BundleKeyCache(const PropertyListReader& reader);

    // The bundle's path itself where the bundle has no identifier.
    std::string bundleGroupKey(const std::string& bundlePath);

  private:
    const PropertyListReader& reader_;
    std::mutex mutex_;
    std::map<std::string, std::optional<std::string>> keys_;
};

} // namespace zenlot
