#include "platform/linux/statusarea/template_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStandardPaths>
#include <QSvgRenderer>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// What panels show, up to twice as fine displays.
const QList<QSize> kSizes{{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}};

const QColor kLightRim(255, 255, 255, 150);
const QColor kDarkRim(0, 0, 0, 90);

bool isInstalled(const QString& themeName) {
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                   u"icons/hicolor/symbolic/apps/%1.svg"_s.arg(themeName))
                .isEmpty();
}

class TemplateIconEngine final : public QIconEngine {
  public:
    TemplateIconEngine(const TemplateImage& image, const QColor& color)
        : file_(image.file), name_(isInstalled(image.themeName) ? image.themeName : QString()),
          color_(color) {}

    QIconEngine* clone() const override { return new TemplateIconEngine(*this); }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        // A panel does not tell how dark it is: a rim of the opposite shade is lost on a background
        // that suits the picture, and saves it on one that does not.
        const QPixmap rim =
            silhouette(size, color_.lightness() < kMiddleGrey ? kLightRim : kDarkRim);
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        for (const QPoint shift : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            painter.drawPixmap(shift, rim);
        painter.drawPixmap(0, 0, silhouette(size, color_));
        return pixmap;
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return kSizes;
    }
    QString iconName() override { return name_; }
    bool isNull() override { return false; }

  private:
    TemplateIconEngine(const TemplateIconEngine&) = default;

    QPixmap silhouette(const QSize& size, const QColor& color) const {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(file_).render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), color);
        return pixmap;
    }

    QString file_;
    QString name_;
    QColor color_;
};

} // namespace

QIcon templateIcon(const TemplateImage& image, const QColor& color) {
    return QIcon(new TemplateIconEngine(image, color));
}

} // namespace zenlot
