#include "shell/model/port_url.h"

#include "inventory/occupied_port.h"
#include "text/numbers.h"

#include <QLatin1StringView>
#include <QList>

#include <algorithm>

namespace zenlot {

namespace {

constexpr QLatin1StringView kStart{"port://"};

// The authority without user and port; what stands in brackets is an address, and stays in them.
QStringView hostIn(QStringView authority) {
    const QStringView host = authority.mid(authority.lastIndexOf(u'@') + 1);
    return host.startsWith(u'[') ? host : host.left(host.indexOf(u':'));
}

// The port that somebody took for the lower half of an address, "0.0.31.144".
std::optional<qint64> portOfAddress(QStringView host) {
    const QList<QStringView> bytes = host.split(u'.');
    if (bytes.size() != 4 || bytes[0] != u"0" || bytes[1] != u"0")
        return std::nullopt;
    const auto high = decimalNumber(bytes[2]);
    const auto low = decimalNumber(bytes[3]);
    if (!high || !low || *high > 255 || *low > 255)
        return std::nullopt;
    return *high * 256 + *low;
}

} // namespace

std::optional<int> portFromUrl(QStringView url) {
    if (!url.startsWith(kStart))
        return std::nullopt;
    const QStringView rest = url.mid(kStart.size());
    const auto* end = std::ranges::find_if(rest, [](QChar character) {
        return character == u'/' || character == u'?' || character == u'#';
    });
    const QStringView host = hostIn(rest.left(end - rest.begin()));
    std::optional<qint64> port = decimalNumber(host, Sign::allowed);
    if (!port)
        port = portOfAddress(host);
    return port && isValidPort(*port) ? std::optional(static_cast<int>(*port)) : std::nullopt;
}

} // namespace zenlot
