#include "platform/linux/property_list_file_reader.h"
#include "support/qt_temporary_folder.h"

#include <QtEndian>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kBundleIdentifier = u"CFBundleIdentifier"_s;
const QString kBundleVersion = u"CFBundleVersion"_s;
const QStringList kBundleKeys{kBundleIdentifier, kBundleVersion};

const QByteArray kXmlList = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>
  <key>List</key><array><string>a</string><dict><key>CFBundleVersion</key><string>v</string></dict></array>
  <key>CFBundleIdentifier</key><string>com.example.ü&amp;&lt;b&gt;</string>
  <key>CFBundleVersion</key><integer>7</integer> <key>Other</key><string>o</string> <key>Yes</key><true/>
</dict></plist>)";

QByteArray reference(qsizetype object) {
    return QByteArray(1, char(object >> 8)) + char(object);
}

QByteArray ascii(const QByteArray& text) {
    return "\x5F\x11" + QByteArray(1, char(text.size() >> 8)) + char(text.size()) + text;
}

// The objects follow each other as they are; the first is the outermost.
QByteArray binaryOf(const std::vector<QByteArray>& objects) {
    QByteArray content = "bplist00";
    QByteArray offsets;
    for (const QByteArray& object : objects) {
        QByteArray offset(4, '\0');
        qToBigEndian(static_cast<quint32>(content.size()), offset.data());
        offsets += offset;
        content += object;
    }
    QByteArray trailer(32, '\0');
    trailer[6] = 4;
    trailer[7] = 2;
    qToBigEndian<quint64>(objects.size(), trailer.data() + 8);
    qToBigEndian<quint64>(static_cast<quint64>(content.size()), trailer.data() + 24);
    return content + offsets + trailer;
}

const QByteArray kUtf16Text("\x65\0c\0o\0m\0.\0\xFC", 11);

TEST(PropertyListFileReaderTest, TakesTheTextsThatWereAskedFor) {
    EXPECT_EQ(propertyListTexts(kXmlList, kBundleKeys),
              (PropertyTexts{{kBundleIdentifier, u"com.example.ü&<b>"_s}}));
    const QByteArray binary = binaryOf(
        {QByteArray("\xD3\0\1\0\2\0\3\0\4\0\5\0\6", 13), ascii("CFBundleIdentifier"),
         ascii("CFBundleVersion"), ascii("Other"), kUtf16Text, QByteArray("\x10\7", 2), "\x51o"});
    EXPECT_EQ(propertyListTexts(binary, kBundleKeys),
              (PropertyTexts{{kBundleIdentifier, u"com.ü"_s}}));
}

// Of other bytes and ends fuzz/property_lists makes more.
TEST(PropertyListFileReaderTest, DamagedFilesReadAsEmpty) {
    const auto nested = [](int depth, const QByteArray& end) {
        return "<plist><dict><key>k</key>" + QByteArray("<array>").repeated(depth) +
               QByteArray("</array>").repeated(depth) +
               kXmlList.mid(kXmlList.indexOf("<key>CFBundleIdentifier")) + end;
    };
    EXPECT_EQ(propertyListTexts(nested(200'000, ""), kBundleKeys).size(), 1);
    const std::vector<QByteArray> refused{
        "",
        "garbage",
        "bplist00",
        "<plist><array/></plist>",
        kXmlList.chopped(3),
        nested(3, "<"),
        kXmlList + QByteArray(4'194'304, ' '),
        binaryOf({}),
        binaryOf({QByteArray("\xD1\0\0\0\0", 5)}),
        binaryOf({QByteArray("\xA1\0\0", 3)}),
        binaryOf({QByteArray("\xDF\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF")})};
    for (const QByteArray& content : refused)
        EXPECT_TRUE(propertyListTexts(content, kBundleKeys).isEmpty())
            << content.left(80).toStdString();
}

// Half a million entries that share one long text, and lists that double with each step.
TEST(PropertyListFileReaderTest, SharedPartsAreTakenOutOnce) {
    constexpr int kEntries = 500'000;
    QByteArray dictionary = "\xDF\x12";
    dictionary.resize(6);
    qToBigEndian<quint32>(kEntries, dictionary.data() + 2);
    dictionary +=
        QByteArray("\0\1", 2).repeated(kEntries) + QByteArray("\0\2", 2).repeated(kEntries);
    const QByteArray longText = QByteArray(60'000, 'x');
    EXPECT_EQ(propertyListTexts(binaryOf({dictionary, ascii("CFBundleVersion"), ascii(longText)}),
                                kBundleKeys)
                  .value(kBundleVersion)
                  .size(),
              longText.size());

    std::vector<QByteArray> doubling{QByteArray("\xD2\0\1\0\3\0\2\0\4", 9),
                                     ascii("CFBundleVersion"), "\x51z", "\x51k"};
    for (qsizetype i = 4; i < 5'000; ++i)
        doubling.push_back("\xA2" + reference(i + 1) + reference(i + 1));
    EXPECT_EQ(propertyListTexts(binaryOf(doubling), kBundleKeys),
              (PropertyTexts{{kBundleVersion, u"z"_s}}));
}

TEST(PropertyListFileReaderTest, ReadsRegularFilesOnly) {
    const QtTemporaryFolder folder;
    const PropertyListFileReader reader;
    folder.write(u"Info.plist"_s, kXmlList);
    ASSERT_EQ(::mkfifo(folder.encoded(u"fifo"_s).constData(), 0600), 0);
    EXPECT_EQ(reader.texts(folder.path(u"Info.plist"_s), kBundleKeys).size(), 1);
    for (const QString& name : {u"missing"_s, u"fifo"_s, u"."_s})
        EXPECT_TRUE(reader.texts(folder.path(name), kBundleKeys).isEmpty()) << name.toStdString();
}

} // namespace
} // namespace zenlot
