// The page for background items as a window of ours: no desktop here has a page on which a service
// of the user's systemd could be allowed. It says what is blocked, why that may be and which
// command allows it, and it follows while the user does so.
//
// The window is made when it is first opened and then kept. Belongs to the main thread.
#pragma once

#include "platform/background_items_settings.h"
#include "shell/backgrounditems/background_items_view_model.h"

#include <QtGlobal>

#include <functional>
#include <memory>

QT_FORWARD_DECLARE_CLASS(QQmlEngine)
QT_FORWARD_DECLARE_CLASS(QQuickWindow)

namespace zenlot {

class BackgroundItemsWindow final : public BackgroundItemsSettings {
  public:
    using Engine = std::function<QQmlEngine&()>;

    // The engine, which finds the module of this room, is asked for when the window is made. It and
    // the view model must outlive the object.
    BackgroundItemsWindow(Engine engine, BackgroundItemsViewModel& viewModel);
    ~BackgroundItemsWindow() override;

    void openSystemSettingsLoginItems() override;

    // Null until it was opened.
    QQuickWindow* window() const { return window_.get(); }

  private:
    Engine engine_;
    BackgroundItemsViewModel& viewModel_;
    std::unique_ptr<QQuickWindow> window_;
};

} // namespace zenlot
