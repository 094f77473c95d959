// Which addresses may be asked, or shown to somebody to go to.
#pragma once

#include <QUrl>

namespace zenlot {

// Over https, to a host that is named, and with nobody's name or password in it: those are a way
// to make an address look like another one.
bool isSecureWebAddress(const QUrl& address);

// Over http to this very machine, which is named by a loopback address and not by a name.
bool isLoopbackWebAddress(const QUrl& address);

} // namespace zenlot
