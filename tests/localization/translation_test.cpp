#include "localization/translation.h"
#include "support/qt_temporary_folder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace zenlot {
namespace {

TEST(TranslationTest, TheFirstLanguageThatHasATableIsTaken) {
    const struct {
        QStringList languages;
        QString table;
        QString word;
    } cases[] = {
        {{}, {}, u"Folytatás"_qs},
        {{u"C"_qs}, {}, u"Folytatás"_qs},
        {{u"is-IS"_qs, u"is"_qs}, {}, u"Folytatás"_qs},
        {{u"zh-TW"_qs, u"zh-Hant-TW"_qs}, {}, u"Folytatás"_qs},
        {{u"en-GB"_qs}, u"en"_qs, u"Continue"_qs},
        {{u"de-AT"_qs, u"en"_qs}, u"de"_qs, u"Weiter"_qs},
        {{u"hu"_qs}, u"hu"_qs, u"Folytatás"_qs},
        {{u"is"_qs, u"fr-CA"_qs}, u"fr"_qs, u"Continuer"_qs},
        {{u"es-419"_qs}, u"es"_qs, u"Continuar"_qs},
        {{u"ja-JP"_qs}, u"ja"_qs, u"続ける"_qs},
        {{u"zh-SG"_qs}, u"zh_CN"_qs, u"继续"_qs},
    };
    for (const auto& [languages, table, word] : cases) {
        const Translation translation(languages);
        EXPECT_EQ(translation.table(), table);
        EXPECT_EQ(QCoreApplication::translate("WelcomePage", "Folytatás"), word);
    }
    EXPECT_EQ(QCoreApplication::translate("WelcomePage", "Folytatás"), u"Folytatás"_qs)
        << "a translation ends with its object";
}

using Key = std::pair<QString, QString>; // the context and the text
using Table = std::map<Key, QString>;

// Texts that are not finished are empty.
Table readTable(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
    QXmlStreamReader reader(&file);
    Table table;
    Key key;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == u"name") {
            key.first = reader.readElementText();
        } else if (reader.name() == u"source") {
            key.second = reader.readElementText();
        } else if (reader.name() == u"translation") {
            const bool isFinished = !reader.attributes().hasAttribute(u"type"_qs);
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            table[key] = isFinished ? text : QString();
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return table;
}

QStringList placeholdersIn(const QString& text) {
    static const QRegularExpression placeholder(u"%(L?\\d+|n)"_qs);
    QStringList found;
    for (const QRegularExpressionMatch& match : placeholder.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

TEST(TranslationTablesTest, HoldEveryTextOfTheSources) {
    const QtTemporaryFolder folder;
    const QString fresh = folder.path(u"fresh.ts"_qs);
    ASSERT_EQ(QProcess::execute(QStringLiteral(ZENLOT_LUPDATE),
                                {u"-silent"_qs, u"-extensions"_qs, u"cpp,h,qml"_qs,
                                 QStringLiteral(ZENLOT_FOLDER "/src"), u"-ts"_qs, fresh}),
              0);
    const Table wanted = readTable(fresh);
    ASSERT_TRUE(wanted.contains({u"WelcomePage"_qs, u"Folytatás"_qs}));

    const QDir tables(QStringLiteral(ZENLOT_FOLDER "/translations"));
    const QStringList names = tables.entryList({u"*.ts"_qs});
    EXPECT_EQ(names.size(), 7);
    for (const QString& name : names) {
        const Table table = readTable(tables.filePath(name));
        for (const auto& [key, text] : table) {
            const std::string where =
                QStringLiteral("%1: %2: \"%3\"").arg(name, key.first, key.second).toStdString();
            EXPECT_TRUE(wanted.contains(key)) << where << " is shown nowhere";
            EXPECT_FALSE(text.isEmpty()) << where << " is not finished";
            EXPECT_EQ(placeholdersIn(text), placeholdersIn(key.second)) << where;
        }
        // The keys are English but for some.
        if (name == u"zenlot_en.ts")
            continue;
        for (const auto& [key, text] : wanted)
            EXPECT_TRUE(table.contains(key))
                << name.toStdString() << " lacks " << key.second.toStdString();
    }
}

} // namespace
} // namespace zenlot
