#include "shell/video/top_aligned_player_view.h"

#include <QPainter>
#include <QPainterPath>

namespace zenlot {

QRectF topAlignedVideoRect(const QSizeF& view, const QSize& presentationSize) {
    if (view.isEmpty())
        return {};
    const double aspectRatio = presentationSize.isEmpty()
                                   ? 16.0 / 9.0
                                   : static_cast<double>(presentationSize.width()) /
                                         static_cast<double>(presentationSize.height());
    return {0, 0, view.width(), view.width() / aspectRatio};
}

TopAlignedPlayerView::TopAlignedPlayerView(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void TopAlignedPlayerView::setRadius(double radius) {
    if (radius == radius_)
        return;
    radius_ = radius;
    update();
    Q_EMIT radiusChanged();
}

void TopAlignedPlayerView::present(const QImage& frame) {
    frame_ = frame;
    update();
}

void TopAlignedPlayerView::paint(QPainter* painter) {
    if (frame_.isNull())
        return;
    const QRectF video = topAlignedVideoRect(size(), frame_.size());
    // Filling a shape with the picture, unlike clipping, gives smooth corners.
    QPainterPath shape;
    shape.addRoundedRect(video.intersected(boundingRect()), radius_, radius_);
    QBrush brush(frame_);
    brush.setTransform(
        QTransform::fromScale(video.width() / frame_.width(), video.height() / frame_.height()));
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawPath(shape);
}

} // namespace zenlot
