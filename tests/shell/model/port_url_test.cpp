#include "shell/model/port_url.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(PortUrlTest, TakesAPortAsHostAndNothingElse) {
    const auto expectEach = [](const char16_t* urls, std::optional<int> port) {
        for (const QString& url : QString::fromUtf16(urls).split(u' '))
            EXPECT_EQ(portFromUrl(url), port) << url.toStdString();
    };
    expectEach(u"port://8080 port://+8080 port://0008080 port://8080/a/b?c#d port://8080?3000 "
               u"port://8080#3000 port://user:1@8080:2/ "
               u"port://0.0.31.144 port://0.0.31.144/ port://0.0.31.144?3000",
               8080);
    expectEach(u"port://1", 1);
    expectEach(u"port://65535", 65535);
    expectEach(
        u"port://0 port://65536 port://4294975376 port://99999999999999999999 port://-8080 "
        u"port://+ port://++80 port://x port://8080x port://80.80 port://[::1] port://%38080 "
        u"port:// port:///8080 port://:8080 port:8080 PORT://8080 ports://8080 http://8080 "
        u"port://0.0.0.0 port://0.1.31.144 port://127.0.31.144 port://0.0.256.1 port://0.0.1.256 "
        u"port://0.0.-1.1 port://0.0.31 port://0.0.1.2.3 port://0.0..1 port://\t8080 "
        u"port://\uFF18\uFF10 8080 ",
        std::nullopt);
}

} // namespace
} // namespace zenlot
