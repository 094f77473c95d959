#include "shell/style/text_style.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeySequence>

#include <algorithm>
#include <cmath>

namespace zenlot {

double TextStyle::scaleOf(const QFont& font) {
    constexpr double kLargest = 3;
    return std::clamp(font.pointSizeF() / kUsualPoints, 1.0, kLargest);
}

TextStyle::TextStyle(QObject* parent) : QObject(parent), base_(QGuiApplication::font()) {
    QGuiApplication::instance()->installEventFilter(this);
}

QFont TextStyle::bold(QFont font) const {
    font.setWeight(QFont::Bold);
    return font;
}

QFont TextStyle::monospaced(QFont font) const {
    font.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    font.setStyleHint(QFont::Monospace);
    return font;
}

QFont TextStyle::sized(double pixelSize, int weight) const {
    QFont font = base_;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

QString TextStyle::keyText(const QString& keys) const {
    return QKeySequence::fromString(keys, QKeySequence::PortableText)
        .toString(QKeySequence::NativeText);
}

bool TextStyle::eventFilter(QObject* watched, QEvent* event) {
    // Every object of the application is told, and this filter sees all of it.
    if (watched == QGuiApplication::instance() && event->type() == QEvent::ApplicationFontChange) {
        base_ = QGuiApplication::font();
        Q_EMIT changed();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zenlot
