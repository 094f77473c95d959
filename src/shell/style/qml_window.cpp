#include "shell/style/qml_window.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace zenlot {

using namespace Qt::StringLiterals;

QmlWindow::QmlWindow(Engine engine, const char* file, Properties properties)
    : engine_(std::move(engine)), source_(u"qrc:/qt/qml/Zenlot/"_s + QLatin1StringView(file)),
      properties_(std::move(properties)) {}

QmlWindow::~QmlWindow() {
    if (window_)
        disconnect(window_.get(), nullptr, this, nullptr);
}

QQuickWindow* QmlWindow::open() {
    if (window_)
        return window_.get();
    QQmlComponent component(&engine_(), source_);
    return make(component);
}

void QmlWindow::openSoon(Opened opened) {
    if (window_) {
        opened(*window_);
        return;
    }
    const bool isLoading = opened_ != nullptr;
    opened_ = std::move(opened);
    if (isLoading)
        return;
    component_ = std::make_unique<QQmlComponent>(&engine_(), source_, QQmlComponent::Asynchronous);
    if (component_->isLoading())
        connect(component_.get(), &QQmlComponent::statusChanged, this, &QmlWindow::finishOpening);
    else
        finishOpening();
}

void QmlWindow::finishOpening() {
    const Opened opened = std::exchange(opened_, {});
    if (QQuickWindow* const window = window_ ? window_.get() : make(*component_))
        opened(*window);
}

QQuickWindow* QmlWindow::make(QQmlComponent& component) {
    owner_ = std::make_unique<QObject>();
    QObject* made = component.createWithInitialProperties(properties_(*owner_));
    window_.reset(qobject_cast<QQuickWindow*>(made));
    if (!window_) {
        qCritical().noquote() << component.errorString();
        delete made;
        owner_.reset();
        return nullptr;
    }
    QQmlEngine::setObjectOwnership(window_.get(), QQmlEngine::CppOwnership);
    connect(window_.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            release();
    });
    // A desktop that makes everything larger through the display changes what a pixel is, and the
    // toolkit leaves the window as it was: too small for what is in it.
    connect(
        window_->screen(), &QScreen::geometryChanged, window_.get(),
        [window = window_.get()] {
            const QSize contents = window->contentItem()->size().toSize();
            if (contents != window->size())
                window->resize(contents.boundedTo(window->screen()->availableSize()));
        },
        Qt::QueuedConnection);
    return window_.get();
}

// The window is in the midst of its own closing.
void QmlWindow::release() {
    QQuickWindow* const window = window_.release();
    disconnect(window, nullptr, this, nullptr);
    connect(window, &QObject::destroyed, owner_.get(), &QObject::deleteLater);
    static_cast<void>(owner_.release());
    window->deleteLater();
    Q_EMIT closed();
}

} // namespace zenlot
