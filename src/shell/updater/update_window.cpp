#include "shell/updater/update_window.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <utility>

namespace zenlot {

UpdateWindow::UpdateWindow(Engine engine, UpdateViewModel& viewModel)
    : engine_(std::move(engine)), viewModel_(viewModel) {}

UpdateWindow::~UpdateWindow() = default;

void UpdateWindow::checkForUpdates() {
    viewModel_.check();
    if (!window_)
        makeWindow();
    if (!window_)
        return;
    window_->show();
    window_->requestActivate(); // which brings it to the front as well
}

void UpdateWindow::makeWindow() {
    QQmlComponent component(&engine_(),
                            QUrl(QStringLiteral("qrc:/qt/qml/Zenlot/Updater/UpdateWindow.qml")));
    window_.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(
        {{QStringLiteral("viewModel"), QVariant::fromValue(&viewModel_)}})));
    if (!window_) {
        qCritical().noquote() << component.errorString();
        return;
    }
    QObject::connect(window_.get(), &QWindow::visibleChanged, &attention_, [this](bool isVisible) {
        if (isVisible)
            return;
        window_.release()->deleteLater();
        viewModel_.dismiss();
    });
}

} // namespace zenlot
