#include "platform/linux/libplist_property_list_reader.h"
#include "support/qt_temporary_folder.h"

#include <QDateTime>
#include <QtEndian>
#include <gtest/gtest.h>

#include <plist/plist.h>
#include <sys/stat.h>

#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QByteArray kXml = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>
  <key>CFBundleIdentifier</key><string>com.example.ü&amp;&lt;b&gt;</string>
  <key>Number</key><integer>7</integer> <key>Real</key><real>0.5</real>
  <key>Yes</key><true/> <key>Date</key><date>2024-02-03T04:05:06Z</date>
  <key>Data</key><data>AAEC</data>
  <key>List</key><array><string>a</string><dict><key>k</key><string>v</string></dict></array>
</dict></plist>)";

QByteArray binaryOf(const QByteArray& xml) {
    plist_t node = nullptr;
    plist_from_xml(xml.constData(), static_cast<uint32_t>(xml.size()), &node);
    char* bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    QByteArray binary(bytes, static_cast<qsizetype>(length));
    plist_to_bin_free(bytes);
    plist_free(node);
    return binary;
}

// A dictionary whose one value is the first of a chain of lists: each holds its `successor` twice.
template <typename Successor>
QByteArray chainOfLists(int lists, Successor successor) {
    QByteArray content = "bplist00";
    QByteArray offsets;
    const auto begin = [&] {
        offsets += char(content.size() >> 8), offsets += char(content.size());
    };
    const auto refer = [&](int object) { content += char(object >> 8), content += char(object); };
    begin();
    content += "\xD1";
    refer(1);
    refer(2);
    begin();
    content += "\x51k";
    for (int i = 0; i < lists; ++i) {
        begin();
        content += i + 1 < lists ? "\xA2" : "\x51z";
        for (int twice = 0; i + 1 < lists && twice < 2; ++twice)
            refer(2 + successor(i));
    }
    QByteArray trailer(32, '\0');
    trailer[6] = trailer[7] = 2;
    qToBigEndian<quint64>(static_cast<quint64>(lists) + 2, trailer.data() + 8);
    qToBigEndian<quint64>(static_cast<quint64>(content.size()), trailer.data() + 24);
    return content + offsets + trailer;
}

TEST(LibplistPropertyListReaderTest, ReadsBothFormats) {
    const QVariantMap expected{{u"CFBundleIdentifier"_s, u"com.example.ü&<b>"_s},
                               {u"Number"_s, qulonglong{7}},
                               {u"Real"_s, 0.5},
                               {u"Yes"_s, true},
                               {u"Date"_s, QDateTime(QDate(2024, 2, 3), QTime(4, 5, 6), Qt::UTC)},
                               {u"Data"_s, QByteArray("\0\1\2", 3)},
                               {u"List"_s, QVariantList{u"a"_s, QVariantMap{{u"k"_s, u"v"_s}}}}};
    EXPECT_EQ(propertyListDictionary(kXml), expected);
    EXPECT_EQ(propertyListDictionary(binaryOf(kXml)), expected);
    EXPECT_EQ(textIn(expected, u"Number"_s), std::nullopt);
    EXPECT_TRUE(propertyListDictionary(chainOfLists(5, [](int i) { return i + 1; })).has_value());
}

TEST(LibplistPropertyListReaderTest, TakesNothingThatIsNoModestDictionary) {
    const auto nested = [](int depth) {
        return "<plist><dict><key>k</key>" + QByteArray("<array>").repeated(depth) +
               QByteArray("</array>").repeated(depth) + "</dict></plist>";
    };
    EXPECT_TRUE(propertyListDictionary(nested(1'000)).has_value());
    const std::vector<QByteArray> refused{
        "",
        "garbage",
        "bplist00",
        "<plist><array/></plist>",
        "<plist><dict><key>k</key>",
        "<plist><string>text</string></plist>",
        binaryOf("<plist><array/></plist>"),
        nested(250'000),
        chainOfLists(40, [](int i) { return i + 1; }),  // grows to 2^40 items
        chainOfLists(200, [](int i) { return i + 1; }), // too deep
        chainOfLists(5, [](int) { return 0; })};        // a circle
    for (const QByteArray& content : refused)
        EXPECT_EQ(propertyListDictionary(content), std::nullopt) << content.left(80).toStdString();
}

TEST(LibplistPropertyListReaderTest, ReadsRegularFilesOnly) {
    const QtTemporaryFolder folder;
    const LibplistPropertyListReader reader;
    folder.write(u"Info.plist"_s, kXml);
    folder.write(u"large"_s, kXml + QByteArray(4'194'304, ' '));
    ASSERT_EQ(::mkfifo(folder.encoded(u"fifo"_s).constData(), 0600), 0);
    EXPECT_EQ(textIn(reader.dictionary(folder.path(u"Info.plist"_s)).value_or(QVariantMap()),
                     u"CFBundleIdentifier"_s),
              u"com.example.ü&<b>"_s);
    for (const QString& name : {u"missing"_s, u"large"_s, u"fifo"_s, u"."_s})
        EXPECT_EQ(reader.dictionary(folder.path(name)), std::nullopt) << name.toStdString();
}

} // namespace
} // namespace zenlot
