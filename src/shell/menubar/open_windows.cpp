#include "shell/menubar/open_windows.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace zenlot {

bool OpenWindows::focusExisting() {
    const QList<QWindow*> windows = windows_.windows();
    if (windows.isEmpty())
        return false;
    const auto first = std::ranges::find_if(windows, [](const QWindow* window) {
        return !window->flags().testFlag(Qt::WindowDoesNotAcceptFocus);
    });
    windows_.bringForward(**(first == windows.end() ? windows.begin() : first));
    return true;
}

void OpenWindows::activate() {
    QWindow* active = QGuiApplication::focusWindow();
    QList<QWindow*> windows = windows_.windows();
    if (windows.removeOne(active))
        windows.append(active);
    for (QWindow* window : windows)
        windows_.orderFront(*window);
}

} // namespace zenlot
