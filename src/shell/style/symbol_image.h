// The symbols of the program: one SVG per name in symbols/, on a grid of 24 by 24. Black draws,
// white erases, so that a picture can hold cut-outs and still looks right in any viewer.
//
//     const QImage image = symbolImage(QStringLiteral("trash"), 32, Qt::red);
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace zenlot {

// A square picture in one colour on a transparent ground; the side is in device pixels. Null when
// there is no symbol of that name or the side is not positive. For the thread that draws only.
QImage symbolImage(const QString& name, int side, const QColor& color);

} // namespace zenlot
