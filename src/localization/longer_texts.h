// A language for tests and pictures: every text is about half as long again, as many a language
// has it, and letters stand higher. Placeholders stay as they are.
//
//     LongerTexts texts;
//     QCoreApplication::installTranslator(&texts); // "Port %1 is free" reads "Pórtpór %1 ísí
//     fréefr"
#pragma once

#include <QStringList>
#include <QTranslator>

namespace zenlot {

class LongerTexts final : public QTranslator {
  public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* sourceText, const char* /*disambiguation*/,
                      int /*n*/) const override {
        if (QLatin1StringView(context) == QLatin1StringView("QShortcut"))
            return {}; // what keys are called is Qt's
        QStringList words = QString::fromUtf8(sourceText).split(u' ');
        for (QString& word : words) {
            if (!word.contains(u'%'))
                word += word.left((word.size() + 1) / 2).toLower();
            word.replace(u'o', u'ó').replace(u'i', u'í').replace(u'E', u'É');
        }
        return words.join(u' ');
    }
};

} // namespace zenlot
