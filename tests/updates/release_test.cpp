// What a feed says, and which version comes after which.
#include "updates/release.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

TEST(ReleaseVersionTest, IsOrderedAsPeopleMeanIt) {
    // Those of one line are the same; each line comes before the next.
    const QList<QStringList> ascending{
        {u"0.9-rc99"_s},
        {u"0.9"_s, u"v0.9.0"_s, u"00.09"_s},
        {u"1.0-1"_s},
        {u"1.0-alpha"_s, u"1.0.Alpha"_s},
        {u"1.0-alpha.1"_s, u"1.0alpha1"_s, u"1.0~alpha01"_s},
        {u"1.0-beta"_s},
        {u"1.0-rc2"_s},
        {u"1.0-rc10"_s},
        {u"1.0-rc99999999999999999999999"_s},
        {u"1.0"_s, u"1.0.0.0"_s, u"1+build.9"_s},
        {u"1.9"_s},
        {u"1.10"_s},
        {u"999999999.0"_s},
    };
    QList<std::pair<qsizetype, ReleaseVersion>> versions{{-1, ReleaseVersion()}};
    for (const QStringList& line : ascending) {
        for (const QString& text : line) {
            const auto version = ReleaseVersion::fromText(text);
            ASSERT_TRUE(version) << text.toStdString();
            versions.append({ascending.indexOf(line), *version});
        }
    }
    const auto sign = [](qsizetype number) { return (number > 0) - (number < 0); };
    for (const auto& [line, one] : versions) {
        for (const auto& [otherLine, other] : versions)
            EXPECT_EQ(sign(ReleaseVersion::compare(one, other)), sign(line - otherLine))
                << one.text().toStdString() << " and " << other.text().toStdString();
    }
    for (const QString& text :
         {u""_s, u"v"_s, u"rc1"_s, u"1."_s, u".1"_s, u"1..2"_s, u"-1.0"_s, u"1.0-"_s, u"1.0 beta"_s,
          u"1.0\n"_s, u"\u0661.0"_s, u"1.4294967296"_s, u"1.0-<b>"_s, u"1."_s.repeated(64) + u'1'})
        EXPECT_FALSE(ReleaseVersion::fromText(text)) << text.toStdString();
}

TEST(ReleaseTest, IsReadFromAFeedThatMakesSenseInEveryPart) {
    const auto release = releaseFromFeed(R"({"version": "v1.4.0-rc1", "later": [{}],
        "page": "https://zenlot.example/1.4.0?a=b#new", "date": "2026-03-05"})");
    ASSERT_TRUE(release);
    EXPECT_EQ(release->version.text(), u"1.4.0-rc1"_s);
    EXPECT_EQ(release->page, QUrl(u"https://zenlot.example/1.4.0?a=b#new"_s));
    EXPECT_EQ(release->date, QDate(2026, 3, 5));

    const QByteArray good = R"({"version": "1.0", "page": "https://a.example"})";
    EXPECT_TRUE(releaseFromFeed(good));
    const auto without = [&](const char* before, const char* after) {
        return QByteArray(good).replace(before, after);
    };
    for (const char* page : {"", "page", "http:", "https:///", "file:///",
                             "javascript:", "https://b.example@", "https://b example/"})
        EXPECT_FALSE(releaseFromFeed(without("https://", page))) << page;
    for (const QByteArray& feed :
         {QByteArray(), QByteArray("<html></html>"), "[" + good + "]", good + "{}", good.chopped(1),
          without("page", "pages"), without("1.0", "new"), without("\"1.0\"", "1.0"),
          without("}", R"(, "date": null})"), without("}", R"(, "date": "soon"})")})
        EXPECT_FALSE(releaseFromFeed(feed)) << feed.constData();
}

} // namespace
} // namespace zenlot
