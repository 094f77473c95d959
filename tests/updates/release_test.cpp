// What a feed says, and which version comes after which.
#include "updates/release.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(ReleaseVersionTest, IsOrderedAsPeopleMeanIt) {
    // Those of one line are the same; each line comes before the next.
    const QList<QStringList> ascending{
        {u"0.9-rc99"_qs},
        {u"0.9"_qs, u"v0.9.0"_qs, u"00.09"_qs},
        {u"1.0-1"_qs},
        {u"1.0-alpha"_qs, u"1.0.Alpha"_qs},
        {u"1.0-alpha.1"_qs, u"1.0alpha1"_qs, u"1.0~alpha01"_qs},
        {u"1.0-beta"_qs},
        {u"1.0-rc2"_qs},
        {u"1.0-rc10"_qs},
        {u"1.0-rc99999999999999999999999"_qs},
        {u"1.0"_qs, u"1.0.0.0"_qs, u"1+build.9"_qs},
        {u"1.9"_qs},
        {u"1.10"_qs},
        {u"999999999.0"_qs},
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
    for (const QString& text : {u""_qs, u"v"_qs, u"rc1"_qs, u"1."_qs, u".1"_qs, u"1..2"_qs,
                                u"-1.0"_qs, u"1.0-"_qs, u"1.0 beta"_qs, u"1.0\n"_qs, u"\u0661.0"_qs,
                                u"1.4294967296"_qs, u"1.0-<b>"_qs, u"1."_qs.repeated(64) + u'1'})
        EXPECT_FALSE(ReleaseVersion::fromText(text)) << text.toStdString();
}

TEST(ReleaseTest, IsReadFromAFeedThatMakesSenseInEveryPart) {
    const auto release = releaseFromFeed(R"({"version": "v1.4.0-rc1", "later": [{}],
        "page": "https://zenlot.example/1.4.0?a=b#new", "date": "2026-03-05"})");
    ASSERT_TRUE(release);
    EXPECT_EQ(release->version.text(), u"1.4.0-rc1"_qs);
    EXPECT_EQ(release->page, QUrl(u"https://zenlot.example/1.4.0?a=b#new"_qs));
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
