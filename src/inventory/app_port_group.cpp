#include "inventory/app_port_group.h"

#include "inventory/uuid.h"

namespace zenlot {

std::string AppPortGroup::id() const {
    if (bundlePath)
        return *bundlePath;
    return ports.empty() ? Uuid::random().text() : ports.front().id();
}

} // namespace zenlot
