#include "platform/linux/alert_text.h"

#include "text/display_line.h"

#include <QChar>
#include <QList>

namespace zenlot {
namespace {

// A sentence about a file with the longest possible name fits.
constexpr qsizetype kLongestHead = 384;
constexpr qsizetype kLongestTail = 128;

QString withoutMiddle(const QString& text) {
    if (text.size() <= kLongestHead + kLongestTail)
        return text;
    QString tail = text.right(kLongestTail);
    if (tail.front().isLowSurrogate()) // half a character is none
        tail.remove(0, 1);
    return withEllipsis(text, kLongestHead) + tail;
}

} // namespace

QString alertText(const QString& text) {
    const QString line = displayLine(withoutMiddle(text), kLongestHead + 1 + kLongestTail);
    QString valid;
    // Halves of pairs that stand alone become U+FFFD on the way.
    for (const uint character : line.toUcs4()) {
        if (QChar::isNonCharacter(character))
            valid.append(QChar::ReplacementCharacter);
        else
            valid.append(QChar::fromUcs4(character));
    }
    return valid;
}

QString alertMarkup(const QString& text) {
    return alertText(text).toHtmlEscaped();
}

} // namespace zenlot
