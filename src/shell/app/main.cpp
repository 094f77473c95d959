// zenlot: the application in its window.
#include "shell/app/zenlot_app.h"

#include <QGuiApplication>
#include <QQuickStyle>

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("zenlot"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Zenlot"));
    QGuiApplication::setApplicationVersion(QStringLiteral(ZENLOT_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("dev.quorvane.zenlot"));
    QQuickStyle::setStyle(QStringLiteral("Fusion"));

    zenlot::ZenlotApp zenlot;
    return zenlot.start() ? QGuiApplication::exec() : 1;
}
