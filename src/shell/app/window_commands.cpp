#include "shell/app/window_commands.h"

#include <QQuickWindow>

namespace zenlot {

WindowCommands::WindowCommands(AppDelegate& delegate, QObject* parent)
    : QObject(parent), delegate_(delegate) {
    connect(&delegate_, &AppDelegate::windowMenuNeedChanged, this,
            &WindowCommands::needsButtonChanged);
}

void WindowCommands::openMenu(QQuickItem* item) {
    QQuickWindow* const window = item->window();
    if (!window)
        return;
    const QRect place = item->mapRectToScene(item->boundingRect()).toAlignedRect();
    delegate_.openWindowMenu(*window, place.translated(window->mapToGlobal(QPoint(0, 0))));
}

void WindowCommands::quit() {
    delegate_.run(kQuitCommand);
}

} // namespace zenlot
