#include "localization/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kFolder = u":/zenlot/translations"_s;
const QString kPrefix = u"zenlot_"_s;

bool isWrittenAlike(const QLocale& one, const QLocale& other) {
    return one.language() == other.language() && one.script() == other.script();
}

QString tableFor(const QStringList& languages) {
    QStringList tables = QDir(kFolder).entryList();
    for (QString& table : tables)
        table = table.mid(kPrefix.size()).section(u'.', 0, 0);
    for (const QString& language : languages) {
        for (const QString& table : std::as_const(tables)) {
            if (isWrittenAlike(QLocale(language), QLocale(table)))
                return table;
        }
    }
    return u"en"_s;
}

} // namespace

Translation::Translation(const QStringList& languages) : table_(tableFor(languages)) {
    // The few words that Qt itself shows, as in the menu of a text field. Not every system has
    // them.
    if (toolkit_.load(u"qtbase_"_s + table_, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkit_);
    if (texts_.load(kPrefix + table_, kFolder))
        QCoreApplication::installTranslator(&texts_);
}

} // namespace zenlot
