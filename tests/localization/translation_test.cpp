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

using namespace Qt::StringLiterals;

TEST(TranslationTest, TheFirstLanguageThatHasATableIsTaken) {
    const struct {
        QStringList languages;
        QString table;
        QString word;
    } cases[] = {
        {{}, u"en"_s, u"Continue"_s},
        {{u"C"_s}, u"en"_s, u"Continue"_s},
        {{u"is-IS"_s, u"is"_s}, u"en"_s, u"Continue"_s},
        {{u"zh-TW"_s, u"zh-Hant-TW"_s}, u"en"_s, u"Continue"_s},
        {{u"en-GB"_s}, u"en"_s, u"Continue"_s},
        {{u"de-AT"_s, u"en"_s}, u"de"_s, u"Weiter"_s},
        {{u"hu"_s}, u"hu"_s, u"Folytatás"_s},
        {{u"is"_s, u"fr-CA"_s}, u"fr"_s, u"Continuer"_s},
        {{u"es-419"_s}, u"es"_s, u"Continuar"_s},
        {{u"ja-JP"_s}, u"ja"_s, u"続ける"_s},
        {{u"zh-SG"_s}, u"zh_CN"_s, u"继续"_s},
    };
    for (const auto& [languages, table, word] : cases) {
        const Translation translation(languages);
        EXPECT_EQ(translation.table(), table);
        EXPECT_EQ(QCoreApplication::translate("WelcomePage", "Folytatás"), word);
    }
    EXPECT_EQ(QCoreApplication::translate("WelcomePage", "Folytatás"), u"Folytatás"_s)
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
            const bool isFinished = !reader.attributes().hasAttribute(u"type"_s);
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            table[key] = isFinished ? text : QString();
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return table;
}

QStringList placeholdersIn(const QString& text) {
    static const QRegularExpression placeholder(u"%(L?\\d+|n)"_s);
    QStringList found;
    for (const QRegularExpressionMatch& match : placeholder.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

TEST(TranslationTablesTest, HoldEveryTextOfTheSources) {
    const QtTemporaryFolder folder;
    const QString fresh = folder.path(u"fresh.ts"_s);
    ASSERT_EQ(QProcess::execute(QStringLiteral(ZENLOT_LUPDATE),
                                {u"-silent"_s, u"-extensions"_s, u"cpp,h,qml"_s,
                                 QStringLiteral(ZENLOT_FOLDER "/src"), u"-ts"_s, fresh}),
              0);
    const Table wanted = readTable(fresh);
    ASSERT_TRUE(wanted.contains({u"WelcomePage"_s, u"Folytatás"_s}));

    const QDir tables(QStringLiteral(ZENLOT_FOLDER "/translations"));
    const QStringList names = tables.entryList({u"*.ts"_s});
    EXPECT_EQ(names.size(), 7);
    for (const QString& name : names) {
        const Table table = readTable(tables.filePath(name));
        for (const auto& [key, text] : table) {
            const std::string where =
                u"%1: %2: \"%3\""_s.arg(name, key.first, key.second).toStdString();
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
