// The global shortcut as the desktop's portal grants it (org.freedesktop.portal.GlobalShortcuts),
// for desktops where no program may watch the keyboard.
//
// The desktop may ask its user first, and may let them choose other keys: the combination here is
// no more than a wish. Without the portal the monitor is silent; when the portal or the bus is
// started again, the wish is made again. Nothing waits for an answer.
//
// The token that comes with a press is put where the toolkit looks for it when a window asks for
// the keyboard.
#pragma once

#include "platform/global_shortcut.h"

namespace zenlot {

class SessionBus;

class PortalGlobalShortcut final : public GlobalShortcut {
  public:
    explicit PortalGlobalShortcut(SessionBus& bus) : bus_(bus) {}

    std::unique_ptr<Monitor> install(Handler handler) override;

  private:
    SessionBus& bus_;
    int sessions_{0};
};

} // namespace zenlot
