// How the status menu and its search field are drawn: in the program's own colours, with rounded
// corners and room to breathe.
#pragma once

#include "shell/style/theme_colors.h"

#include <QIcon>
#include <QPalette>
#include <QProxyStyle>

QT_FORWARD_DECLARE_CLASS(QStyleOptionMenuItem)

namespace zenlot {

// A property of those of a menu's actions that can't be chosen but are to be read.
inline constexpr const char* kHeadingProperty = "heading";

class StatusMenuStyle final : public QProxyStyle {
    Q_OBJECT

  public:
    // Without soft edges the corners are cut out of the window.
    explicit StatusMenuStyle(bool hasSoftEdges);

    // Takes the colours from the palette that the application has now.
    void followPalette();

    // Those that are in force, for the search field.
    QPalette fieldPalette() const;

    // The picture in front of a heading.
    QIcon headingIcon(const QString& symbol) const;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;

  private:
    void drawPanel(QPainter& painter, const QRect& rect) const;
    void drawField(QPainter& painter, const QRect& rect) const;
    void drawItem(QPainter& painter, const QStyleOptionMenuItem& item, const QWidget* widget) const;

    ThemeColors colors_;
    bool hasSoftEdges_;
};

} // namespace zenlot
