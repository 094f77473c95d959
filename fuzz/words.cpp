// Short texts from elsewhere: the feed of releases, links, what is typed into the desktop's search,
// and lines that are shown.
#include "fuzzing.h"
#include "shell/intents/port_query.h"
#include "shell/model/port_url.h"
#include "text/display_line.h"
#include "text/log_line.h"
#include "text/numbers.h"
#include "updates/release.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zenlot;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QString text = QString::fromUtf8(bytes);
    if (const auto release = releaseFromFeed(bytes))
        ZENLOT_EXPECT(release->page.scheme() == QLatin1String("https"));
    if (const auto port = portFromUrl(text))
        ZENLOT_EXPECT(*port >= 1 && *port <= 65535);
    parsePortQuery(text, {QStringLiteral("check port"), QStringLiteral("Port prüfen")});
    const auto one = ReleaseVersion::fromText(text.left(text.size() / 2));
    const auto other = ReleaseVersion::fromText(text.mid(text.size() / 2));
    if (one && other)
        ZENLOT_EXPECT(ReleaseVersion::compare(*one, *other) ==
                      -ReleaseVersion::compare(*other, *one));
    ZENLOT_EXPECT(displayLine(text).size() <= kLongestLine + 1); // and the ellipsis
    ZENLOT_EXPECT(!logLine(text, 4096).contains(QLatin1Char('\n')));
    numericCharacters(text, 9);
    decimalNumber(text, Sign::allowed);
    return 0;
}
