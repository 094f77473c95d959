// Shows the frames of a video as wide as the item, from its upper edge down: an item that is taller
// than the video stays empty below it, one that is less tall cuts the video off. The corners of the
// item are rounded.
//
// Frames are painted by hand, since Qt's own item for videos stays blank where Qt draws without a
// graphics card.
#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

// Where a video goes in a view of that size; 16:9 while the size of the video is not known.
QRectF topAlignedVideoRect(const QSizeF& view, const QSize& presentationSize);

class TopAlignedPlayerView : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)

  public:
    explicit TopAlignedPlayerView(QQuickItem* parent = nullptr);

    double radius() const { return radius_; }
    void setRadius(double radius);

    // A null image shows nothing.
    void present(const QImage& frame);

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void radiusChanged();

  private:
    double radius_{0};
    QImage frame_;
};

} // namespace zenlot
