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

QString bounded(const QString& text, qsizetype length) {
    if (text.size() <= length)
        return text;
    // Half a character is none.
    const qsizetype end = text.at(length - 1).isHighSurrogate() ? length - 1 : length;
    return text.left(end) + QChar(0x2026);
}

} // namespace

QString displayLine(const QString& text, qsizetype longest) {
    QString line = bounded(text, longest);
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
