#include "updates/web_address.h"

#include <QHostAddress>

namespace zenlot {
namespace {

constexpr qsizetype kLongestAddress = 2'048;

bool isPlain(const QUrl& address) {
    return address.isValid() && !address.host().isEmpty() && address.userInfo().isEmpty() &&
           address.toEncoded().size() <= kLongestAddress;
}

} // namespace

bool isSecureWebAddress(const QUrl& address) {
    return address.scheme() == QLatin1String("https") && isPlain(address);
}

bool isLoopbackWebAddress(const QUrl& address) {
    return address.scheme() == QLatin1String("http") && isPlain(address) &&
           QHostAddress(address.host()).isLoopback();
}

} // namespace zenlot
