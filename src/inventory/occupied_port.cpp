#include "inventory/occupied_port.h"

#include "inventory/process_names.h"

#include <unistd.h>

#include <charconv>

namespace zenlot {
namespace {

// Digits with at most one sign before them; a minus sign only before zero.
std::optional<UserId> parseUserId(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    UserId value{0};
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || parsedEnd != end || (isNegative && value != 0))
        return std::nullopt;
    return value;
}

} // namespace

std::string OccupiedPort::id() const {
    return std::to_string(pid) + ':' + std::to_string(port);
}

bool OccupiedPort::isCurrentUser(UserId currentUser) const {
    return parseUserId(user) == currentUser;
}

std::optional<std::string> OccupiedPort::enclosingAppBundlePath() const {
    return zenlot::enclosingAppBundlePath(executablePath);
}

const char* protoName(AddressFamily family) {
    return family == AddressFamily::ipv6 ? "TCP6" : "TCP4";
}

UserId currentUserId() {
    return getuid();
}

} // namespace zenlot
