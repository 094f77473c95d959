// Draws the clip and writes its frames to standard output, one after the other, as four bytes for
// each pixel: red, green, blue, unused.
//
//     zenlot_shell_onboarding_clip | ffmpeg -f rawvideo -pixel_format rgb0 ...
//
// Time is counted in frames, so that every run draws the same.
#include <QAnimationDriver>
#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtQml/qqmlextensionplugin.h>

#include <cstddef>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace {

constexpr int kFramesPerSecond = 30;

// Gives all animations the time of the clip.
class ClipClock final : public QAnimationDriver {
  public:
    void advance() override {
        ++frame_;
        advanceAnimation();
    }
    qint64 elapsed() const override { return frame_ * 1000 / kFramesPerSecond; }

  private:
    qint64 frame_{0};
};

bool write(const QImage& frame) {
    for (int row = 0; row < frame.height(); ++row) {
        const auto bytes = static_cast<std::size_t>(frame.width()) * 4;
        if (std::fwrite(frame.constScanLine(row), 1, bytes, stdout) != bytes)
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setFont(QFont(QStringLiteral("Inter")));
    QPalette light;
    light.setColor(QPalette::Window, QColor(0xf6, 0xf6, 0xf8));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::WindowText, QColor(0x1c, 0x1c, 0x1e));
    QGuiApplication::setPalette(light);

    ClipClock clock;
    clock.install();
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/OnboardingClip/ClipScene.qml")));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.show();
    while (view.rootObject()->property("playing").toBool()) {
        QGuiApplication::processEvents();
        if (!write(view.grabWindow().convertToFormat(QImage::Format_RGBX8888)))
            return 1;
        clock.advance();
    }
    return 0;
}
