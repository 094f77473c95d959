// A GlobalShortcut that a test presses.
#pragma once

#include "platform/global_shortcut.h"

#include <utility>

namespace zenlot {

class FakeGlobalShortcut final : public GlobalShortcut {
  public:
    bool isRefused{false};
    int installations{0};

    std::unique_ptr<Monitor> install(Handler handler) override {
        if (isRefused)
            return nullptr;
        ++installations;
        handler_ = std::move(handler);
        return std::make_unique<Installed>(*this);
    }

    bool isInstalled() const { return static_cast<bool>(handler_); }

    // As if the user pressed the keys in another program.
    void press() {
        // A copy, since the handler may destroy the monitor.
        if (const Handler handler = handler_)
            handler();
    }

  private:
    class Installed final : public Monitor {
      public:
        explicit Installed(FakeGlobalShortcut& shortcut) : shortcut_(shortcut) {}
        Installed(const Installed&) = delete;
        Installed& operator=(const Installed&) = delete;
        ~Installed() override { shortcut_.handler_ = nullptr; }

      private:
        FakeGlobalShortcut& shortcut_;
    };

    Handler handler_;
};

} // namespace zenlot
