// The desktop's status area: the part of a panel where programs show icons of their own.
//
//     item = statusBar.makeStatusItem([this](std::optional<QRect> place) { openMenu(place); });
//     statusBar.observeAvailability(this, [this] { applyActivationPolicy(); });
//
// Panels come late, end and start again: items reappear by themselves.
// Everything here belongs to the main thread; handlers are called from the event loop.
#pragma once

#include "platform/status_item.h"

#include <QRect>

#include <functional>
#include <memory>
#include <optional>

QT_FORWARD_DECLARE_CLASS(QObject)

namespace zenlot {

class StatusBar {
  public:
    // The user clicked the item. `place` is what was clicked, in pixels of the desktop, or the
    // pointer; none where windows can't be put beside it.
    using ActivationHandler = std::function<void(std::optional<QRect> place)>;

    StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    virtual ~StatusBar() = default;

    // The status bar must outlive its items. A handler may destroy the item that called it.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem(ActivationHandler handler) = 0;

    // False when there has been no status area for a few seconds. Until that is certain, after the
    // start and after a panel has ended, it counts as available.
    virtual bool isAvailable() const = 0;

    // Calls the handler when isAvailable() has changed. Ends with `context`, or with the bar.
    virtual void observeAvailability(QObject* context, std::function<void()> handler) = 0;
};

} // namespace zenlot
