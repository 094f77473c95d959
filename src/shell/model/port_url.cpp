#include "shell/model/port_url.h"

#include "inventory/occupied_port.h"
#include "text/numbers.h"

#include <QLatin1StringView>

#include <algorithm>

namespace zenlot {

namespace {

constexpr QLatin1StringView kStart{"port://"};

// The authority without user and port; what stands in brackets is an address, and stays in them.
QStringView hostIn(QStringView authority) {
    const QStringView host = authority.mid(authority.lastIndexOf(u'@') + 1);
    return host.startsWith(u'[') ? host : host.left(host.indexOf(u':'));
}

} // namespace

std::optional<int> portFromUrl(QStringView url) {
    if (!url.startsWith(kStart))
        return std::nullopt;
    const QStringView rest = url.mid(kStart.size());
    const auto* end = std::ranges::find_if(rest, [](QChar character) {
        return character == u'/' || character == u'?' || character == u'#';
    });
    const auto port = decimalNumber(hostIn(rest.left(end - rest.begin())), Sign::allowed);
    return port && isValidPort(*port) ? std::optional(static_cast<int>(*port)) : std::nullopt;
}

} // namespace zenlot
