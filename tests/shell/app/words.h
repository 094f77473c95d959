// The words that stand in a window, and where.
#pragma once

#include <QList>
#include <QQuickItem>
#include <QRectF>
#include <QString>

namespace zenlot {

inline constexpr qreal kRounding = 1;

// A text, or a button with one.
struct Words {
    QQuickItem* item;
    QString text;
    QRectF place; // in the window
};

// What the letters of an item take up of it.
inline QRectF lettersOf(const QQuickItem& item) {
    QRectF letters(0, 0, item.property("contentWidth").toReal(),
                   item.property("contentHeight").toReal());
    const int alignment = item.property("effectiveHorizontalAlignment").toInt();
    if (alignment == Qt::AlignHCenter)
        letters.moveLeft((item.width() - letters.width()) / 2);
    if (alignment == Qt::AlignRight)
        letters.moveRight(item.width());
    if (item.property("verticalAlignment").toInt() == Qt::AlignVCenter)
        letters.moveTop((item.height() - letters.height()) / 2);
    return letters;
}

inline void collectWords(QQuickItem* item, QList<Words>& found) {
    if (!item->isVisible() || item->opacity() < 1)
        return;
    const QString text = item->property("text").toString();
    const bool isText = item->inherits("QQuickText") || item->inherits("QQuickTextEdit") ||
                        item->inherits("QQuickTextInput");
    if (!text.isEmpty() && (isText || item->inherits("QQuickAbstractButton"))) {
        const QRectF place = isText ? lettersOf(*item) : QRectF({}, item->size());
        const QMarginsF rounding(kRounding, kRounding, kRounding, kRounding);
        found.append({item, text, item->mapRectToScene(place).marginsRemoved(rounding)});
    }
    for (QQuickItem* child : item->childItems())
        collectWords(child, found);
}

} // namespace zenlot
