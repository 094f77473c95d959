// The URLs by which other programs ask for a port: "port://8080".
//
// The scheme is "port" exactly, and the host is the port in decimal digits, with a sign if need be;
// what else a URL may have (user, path, query and so on) makes no difference. None for every other
// text, and for ports outside 1 to 65535.
//
// The text is read as it came: QUrl takes the number for an IPv4 address and writes
// "port://0.0.31.144". Desktops hand links on through it, so that form is understood as well.
#pragma once

#include <QStringView>

#include <optional>

namespace zenlot {

std::optional<int> portFromUrl(QStringView url);

} // namespace zenlot
