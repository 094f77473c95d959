// The keyboard shortcut that works while another program has the keyboard: Control-Alt-Shift-P.
//
// It counts only with exactly these modifiers: not with Caps Lock or the Super key added, while
// Num Lock makes no difference. A press while one of our own windows is active is not reported; it
// belongs to that window.
//
//     eventMonitor_ = shortcut.install([this] { showMainWindow(); });
//     eventMonitor_.reset();
//
// Everything here belongs to the main thread. The handler is called from the event loop, once for
// each press; it may destroy the monitor that called it, or install another.
#pragma once

#include <functional>
#include <memory>

namespace zenlot {

class GlobalShortcut {
  public:
    using Handler = std::function<void()>;

    // The shortcut is watched for as long as this lives.
    class Monitor {
      public:
        Monitor() = default;
        Monitor(const Monitor&) = delete;
        Monitor& operator=(const Monitor&) = delete;
        virtual ~Monitor() = default;
    };

    GlobalShortcut() = default;
    GlobalShortcut(const GlobalShortcut&) = delete;
    GlobalShortcut& operator=(const GlobalShortcut&) = delete;
    virtual ~GlobalShortcut() = default;

    // Null when it is known at once that the desktop has no such service. While another program
    // holds the combination, or until the user has said yes to a desktop that asks first, the
    // monitor is silent. One monitor at a time; the object must outlive it.
    [[nodiscard]] virtual std::unique_ptr<Monitor> install(Handler handler) = 0;
};

} // namespace zenlot
