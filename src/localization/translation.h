// The language of the user. While it lives, every text that goes through Qt's translation system is
// shown as the table of that language has it.
//
//     QApplication application(argc, argv);
//     const Translation translation; // before anything that has texts is made
//
// The first of the user's languages that has a table is taken, whatever the country: for "de-AT"
// that of German. Scripts count: there is a table for simplified Chinese and none for traditional
// Chinese. Whose languages have none, or who has none at all, gets that of English, where the few
// keys that are not English, or name what other desktops have, are put right. What a table lacks is
// shown as it stands in the code. The tables are part of the program; they come from the folder
// translations/.
//
// Main thread, after the application object and not longer than that; the texts themselves may be
// asked for on any thread.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTranslator>

namespace zenlot {

class Translation final {
  public:
    // The languages by preference, named as BCP 47 has it.
    explicit Translation(const QStringList& languages = QLocale::system().uiLanguages());

    // The name of the table in use, such as "de" or "zh_CN".
    const QString& table() const { return table_; }

  private:
    QString table_;
    QTranslator toolkit_;
    QTranslator texts_;
};

} // namespace zenlot
