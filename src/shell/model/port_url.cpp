#include "shell/model/port_url.h"

#include <QLatin1StringView>

#include <algorithm>

namespace zenlot {

namespace {

constexpr QLatin1StringView kStart{"port://"};
constexpr int kHighestPort = 65535;

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
    QStringView digits = hostIn(rest.left(end - rest.begin()));
    if (digits.startsWith(u'+'))
        digits = digits.mid(1);
    // No negative number is a port, so a minus needs no reading.
    int port = 0;
    for (const QChar digit : digits) {
        if (digit < u'0' || digit > u'9')
            return std::nullopt;
        port = std::min(10 * port + (digit.unicode() - u'0'), kHighestPort + 1);
    }
    if (port < 1 || port > kHighestPort)
        return std::nullopt;
    return port;
}

} // namespace zenlot
