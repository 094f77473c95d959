#include "shell/style/symbol_image.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr double kGrid = 24;
constexpr double kStroke = 2;
constexpr double kThinnestLine = 1.15; // device pixels

// How much of each pixel is drawn and not erased: of a premultiplied pixel, white is as bright as
// it is opaque and black is not bright at all.
QImage coverage(const QString& path, int side) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    // A line must not get so thin that it fades away.
    const double stroke = std::max(kStroke, kThinnestLine * kGrid / side);
    svg.replace("stroke-width=\"2\"", "stroke-width=\"" + QByteArray::number(stroke) + '"');
    QSvgRenderer renderer(svg);

    QImage drawing(side, side, QImage::Format_ARGB32_Premultiplied);
    drawing.fill(Qt::transparent);
    QPainter painter(&drawing);
    renderer.render(&painter);
    painter.end();

    QImage mask(side, side, QImage::Format_Alpha8);
    for (int y = 0; y < side; ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(drawing.constScanLine(y));
        uchar* to = mask.scanLine(y);
        for (int x = 0; x < side; ++x)
            to[x] = static_cast<uchar>(qAlpha(from[x]) - qRed(from[x]));
    }
    return mask;
}

} // namespace

QImage symbolImage(const QString& name, int side, const QColor& color) {
    const QString path = u":/qt/qml/Zenlot/Style/symbols/%1.svg"_s.arg(name);
    if (side <= 0 || name.contains(u'/') || !QFile::exists(path))
        return {};
    const QString key = u"symbol %1 %2 %3"_s.arg(name).arg(side).arg(color.name(QColor::HexArgb));
    QPixmap cached;
    if (QPixmapCache::find(key, &cached))
        return cached.toImage();

    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, coverage(path, side));
    painter.end();
    QPixmapCache::insert(key, QPixmap::fromImage(image));
    return image;
}

} // namespace zenlot
