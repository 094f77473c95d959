#include "platform/linux/windowsystem/desktop_application_windows.h"

#include "platform/linux/windowsystem/x11_display.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

bool isPanel(const QWindow& window) {
    const Qt::WindowType type = window.type();
    return (type != Qt::Window && type != Qt::Dialog) ||
           window.flags().testFlag(Qt::BypassWindowManagerHint);
}

} // namespace

DesktopApplicationWindows::DesktopApplicationWindows() {
    if (auto* const connection = x11Connection())
        x11_.emplace(*connection);
    qGuiApp->installEventFilter(this);
}

QList<QWindow*> DesktopApplicationWindows::windows() const {
    QList<QWindow*> windows;
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && !isPanel(*window))
            windows.append(window);
    }
    return windows;
}

void DesktopApplicationWindows::orderFront(QWindow& window) {
    window.raise();
}

void DesktopApplicationWindows::bringForward(QWindow& window) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.setVisible(true);
    window.raise();
    window.requestActivate();
    if (x11_)
        x11_->activate(static_cast<std::uint32_t>(window.winId()));
}

void DesktopApplicationWindows::setActivationPolicy(ActivationPolicy policy) {
    if (policy == policy_)
        return;
    policy_ = policy;
    for (QWindow* window : windows())
        applyPolicy(*window, WindowState::mapped);
}

bool DesktopApplicationWindows::blendsWindows() const {
    return x11_ ? x11_->hasCompositor() : QGuiApplication::platformName().startsWith(u"wayland"_s);
}

// The toolkit tells of a window's showing just before it maps the window. A window manager that is
// still busy with an earlier closing takes the hint away again, so it is also asked afterwards.
bool DesktopApplicationWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && watched->isWindowType() && !event->spontaneous()) {
        const QPointer<QWindow> window = static_cast<QWindow*>(watched);
        applyPolicy(*window, WindowState::unmapped);
        QMetaObject::invokeMethod(
            this,
            [this, window] {
                if (window)
                    applyPolicy(*window, WindowState::mapped);
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void DesktopApplicationWindows::applyPolicy(QWindow& window, WindowState state) {
    if (x11_ && window.isTopLevel() && window.handle() != nullptr && !isPanel(window))
        x11_->setSkipsTaskbar(static_cast<std::uint32_t>(window.winId()),
                              state == WindowState::mapped, policy_ == ActivationPolicy::accessory);
}

} // namespace zenlot
