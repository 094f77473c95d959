#include "shell/menubar/status_menu_style.h"

#include "shell/style/symbol_image.h"

#include <QAction>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPanelRadius = 9;
constexpr int kPanelPadding = 5;
constexpr int kRowHeight = 26;
constexpr int kLeastRowMargin = 8;
constexpr int kRowPadding = 12; // in line with the search field
constexpr int kRowRadius = 5;
constexpr int kSeparatorHeight = 11;
constexpr int kFieldRadius = 6;
constexpr int kSymbolSize = 14;
constexpr int kSymbolGap = 8;
constexpr int kShortcutGap = 24;

// A box one pixel wide whose line lies inside of the rectangle.
QPainterPath outline(const QRect& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
    return path;
}

QImage symbol(const QString& name, double ratio, const QColor& color) {
    QImage image = symbolImage(name, static_cast<int>(std::lround(kSymbolSize * ratio)), color);
    image.setDevicePixelRatio(ratio);
    return image;
}

QPoint symbolPlace(const QRect& row) {
    return {row.left(), row.top() + (row.height() - kSymbolSize) / 2};
}

// The option of an item does not tell which action it is.
bool isHeading(const QWidget* widget, const QRect& rect) {
    const auto* menu = qobject_cast<const QMenu*>(widget);
    const QAction* action = menu == nullptr ? nullptr : menu->actionAt(rect.center());
    return action != nullptr && action->property(kHeadingProperty).toBool();
}

} // namespace

StatusMenuStyle::StatusMenuStyle(bool hasSoftEdges)
    : QProxyStyle(u"Fusion"_s), hasSoftEdges_(hasSoftEdges) {
    followPalette();
}

void StatusMenuStyle::followPalette() {
    colors_ = themeColors(QGuiApplication::palette());
}

QPalette StatusMenuStyle::fieldPalette() const {
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Text, colors_.label);
    palette.setColor(QPalette::PlaceholderText, colors_.tertiaryLabel);
    palette.setColor(QPalette::Highlight, colors_.accent);
    palette.setColor(QPalette::HighlightedText, colors_.accentText);
    return palette;
}

QIcon StatusMenuStyle::headingIcon(const QString& name) const {
    return QPixmap::fromImage(symbol(name, qGuiApp->devicePixelRatio(), colors_.vividOrange));
}

void StatusMenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                    QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelMenu:
        drawPanel(*painter, option->rect);
        break;
    case PE_PanelLineEdit:
        drawField(*painter, option->rect);
        break;
    case PE_FrameMenu:
    case PE_FrameLineEdit:
    case PE_FrameFocusRect:
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void StatusMenuStyle::drawPanel(QPainter& painter, const QRect& rect) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (hasSoftEdges_) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    } else {
        // What the mask leaves of the corners belongs to the line.
        painter.fillRect(rect, laidOver(colors_.popover, colors_.separator));
    }
    painter.setPen(laidOver(colors_.popover, colors_.separator));
    painter.setBrush(colors_.popover);
    painter.drawPath(outline(rect, kPanelRadius));
    painter.restore();
}

void StatusMenuStyle::drawField(QPainter& painter, const QRect& rect) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors_.separator);
    painter.setBrush(colors_.field);
    painter.drawPath(outline(rect, kFieldRadius));
    painter.restore();
    painter.drawImage(symbolPlace(rect.adjusted(7, 0, 0, 0)),
                      symbol(u"magnifyingglass"_s, painter.device()->devicePixelRatioF(),
                             colors_.secondaryLabel));
}

void StatusMenuStyle::drawControl(ControlElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    if (element == CE_MenuEmptyArea)
        return;
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr)
        drawItem(*painter, *item, widget);
    else
        QProxyStyle::drawControl(element, option, painter, widget);
}

void StatusMenuStyle::drawItem(QPainter& painter, const QStyleOptionMenuItem& item,
                               const QWidget* widget) const {
    if (item.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(item.rect.left() + kRowPadding, item.rect.center().y(),
                               item.rect.width() - 2 * kRowPadding, 1),
                         colors_.separator);
        return;
    }
    const bool isEnabled = (item.state & State_Enabled) != 0;
    const bool isSelected = isEnabled && (item.state & State_Selected) != 0;
    if (isSelected) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors_.accent);
        painter.drawRoundedRect(item.rect, kRowRadius, kRowRadius);
        painter.restore();
    }
    QRect row = item.rect.adjusted(kRowPadding, 0, -kRowPadding, 0);
    if (!item.icon.isNull()) {
        painter.drawPixmap(symbolPlace(row), item.icon.pixmap(kSymbolSize));
        row.setLeft(row.left() + kSymbolSize + kSymbolGap);
    }
    const qsizetype tab = item.text.indexOf(u'\t');
    const bool isPlain = isEnabled || isHeading(widget, item.rect);
    painter.setFont(item.font);
    painter.setPen(isSelected ? colors_.accentText
                   : isPlain  ? colors_.label
                              : colors_.tertiaryLabel);
    painter.drawText(row, Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextHideMnemonic,
                     item.text.left(tab));
    if (tab < 0)
        return;
    painter.setPen(isSelected ? colors_.accentText : colors_.tertiaryLabel);
    painter.drawText(row, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     item.text.mid(tab + 1));
}

QSize StatusMenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                        const QSize& size, const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuItem || item == nullptr)
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return {size.width(), kSeparatorHeight};
    const int shortcut = item->text.contains(u'\t') ? kShortcutGap : 0;
    const int icon = item->icon.isNull() ? 0 : kSymbolSize + kSymbolGap;
    return {size.width() + shortcut + icon + 2 * kRowPadding,
            std::max(kRowHeight, item->fontMetrics.height() + kLeastRowMargin)};
}

int StatusMenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                 const QWidget* widget) const {
    switch (metric) {
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return kPanelPadding;
    case PM_MenuPanelWidth:
    case PM_MenuDesktopFrameWidth:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int StatusMenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                               QStyleHintReturn* returned) const {
    if (hint == SH_Menu_Mask && !hasSoftEdges_) {
        auto* mask = qstyleoption_cast<QStyleHintReturnMask*>(returned);
        if (mask == nullptr)
            return 0;
        QPainterPath path;
        path.addRoundedRect(option->rect, kPanelRadius, kPanelRadius);
        mask->region = QRegion(path.toFillPolygon().toPolygon());
        return 1;
    }
    if (hint == SH_Menu_MouseTracking)
        return 1;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

} // namespace zenlot
