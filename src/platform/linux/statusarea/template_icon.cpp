#include "platform/linux/statusarea/template_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStandardPaths>
#include <QSvgRenderer>

namespace zenlot {
namespace {

// What panels show, up to twice as fine displays.
const QList<QSize> kSizes{{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}};

bool isInstalled(const QString& themeName) {
    return !QStandardPaths::locate(
                QStandardPaths::GenericDataLocation,
                QStringLiteral("icons/hicolor/symbolic/apps/%1.svg").arg(themeName))
                .isEmpty();
}

class TemplateIconEngine final : public QIconEngine {
  public:
    TemplateIconEngine(const TemplateImage& image, const QColor& color)
        : file_(image.file), name_(isInstalled(image.themeName) ? image.themeName : QString()),
          color_(color) {}

    QIconEngine* clone() const override { return new TemplateIconEngine(*this); }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(file_).render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), color_);
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

    QString file_;
    QString name_;
    QColor color_;
};

} // namespace

QIcon templateIcon(const TemplateImage& image, const QColor& color) {
    return QIcon(new TemplateIconEngine(image, color));
}

} // namespace zenlot
