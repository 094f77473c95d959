#include "shell/backgrounditems/background_items_window.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <utility>

namespace zenlot {

BackgroundItemsWindow::BackgroundItemsWindow(Engine engine, BackgroundItemsViewModel& viewModel)
    : engine_(std::move(engine)), viewModel_(viewModel) {}

BackgroundItemsWindow::~BackgroundItemsWindow() = default;

void BackgroundItemsWindow::openSystemSettingsLoginItems() {
    viewModel_.refresh();
    if (!window_) {
        QQmlComponent component(
            &engine_(),
            QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/BackgroundItems/BackgroundItemsWindow.qml")));
        window_.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(
            {{QStringLiteral("viewModel"), QVariant::fromValue(&viewModel_)}})));
        if (!window_) {
            qCritical("%s", qUtf8Printable(component.errorString()));
            return;
        }
        QQmlEngine::setObjectOwnership(window_.get(), QQmlEngine::CppOwnership);
    }
    // It stands before the window that it was asked for in, which gets the keyboard back from it.
    if (QWindow* const asking = QGuiApplication::focusWindow(); asking != window_.get())
        window_->setTransientParent(asking);
    window_->show();
    window_->requestActivate();
}

} // namespace zenlot
