#include "shell/style/theme.h"

#include <QEvent>
#include <QGuiApplication>

namespace zenlot {

Theme::Theme(QObject* parent) : QObject(parent), colors_(themeColors(QGuiApplication::palette())) {
    QGuiApplication::instance()->installEventFilter(this);
}

void Theme::setMotion(double motion) {
    if (motion == motion_)
        return;
    motion_ = motion;
    Q_EMIT motionChanged();
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
    // Every object of the application is told, and this filter sees all of it.
    if (watched == QGuiApplication::instance() &&
        event->type() == QEvent::ApplicationPaletteChange) {
        colors_ = themeColors(QGuiApplication::palette());
        Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zenlot
