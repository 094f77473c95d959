#include "text/display_line.h"

#include <QChar>

namespace zenlot {
namespace {

bool isDisruptive(QChar character) {
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    switch (character.direction()) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return false;
    }
}

} // namespace

QString cutOff(const QString& text, qsizetype longest) {
    if (text.size() <= longest)
        return text;
    // Half a character is none.
    return text.left(text.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
}

QString withEllipsis(const QString& text, qsizetype longest) {
    return text.size() <= longest ? text : cutOff(text, longest) + QChar(0x2026);
}

QString displayLine(const QString& text, qsizetype longest) {
    QString line = withEllipsis(text, longest);
    for (QChar& character : line) {
        if (isDisruptive(character))
            character = QChar::ReplacementCharacter;
    }
    return line;
}

QString displayLine(const std::string& utf8, qsizetype longest) {
    return displayLine(QString::fromStdString(utf8), longest);
}

} // namespace zenlot
