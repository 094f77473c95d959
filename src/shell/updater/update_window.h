// "Check for Updates…": asks the release feed and shows what comes of it in a small window. The
// window exists while it is shown; closing it ends a check that is under way.
//
// The engine is asked for when the first window is made, so that a program which never checks need
// not have one:
//
//     UpdateWindow updates([&]() -> QQmlEngine& { return engine; }, viewModel);
//     updates.checkForUpdates();
//
// The view model must outlive the object, and the object must be gone before the engine.
#pragma once

#include "platform/updater.h"
#include "shell/updater/update_view_model.h"

#include <QObject>

#include <functional>
#include <memory>

QT_FORWARD_DECLARE_CLASS(QQmlEngine)
QT_FORWARD_DECLARE_CLASS(QQuickWindow)

namespace zenlot {

class UpdateWindow final : public Updater {
  public:
    using Engine = std::function<QQmlEngine&()>;

    UpdateWindow(Engine engine, UpdateViewModel& viewModel);
    ~UpdateWindow() override;

    void checkForUpdates() override;

    // Null while there is none.
    QQuickWindow* window() const { return window_.get(); }

  private:
    void makeWindow();

    Engine engine_;
    UpdateViewModel& viewModel_;
    std::unique_ptr<QQuickWindow> window_;
    QObject attention_; // the last member: a window that ends with the object is not listened to
};

} // namespace zenlot
