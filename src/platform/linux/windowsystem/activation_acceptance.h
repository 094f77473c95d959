// Uses what came with another program's wish to see this one (a second start, a shortcut).
//
// To be called before a window is brought forward. On Wayland the token is put where the toolkit
// looks for it when a window asks for the keyboard. On X11 the desktop is told that the start is
// over; else its pointer would show for many seconds that something is being started.
//
//     acceptActivation(activation);
//     window->requestActivate();
#pragma once

#include "platform/activation.h"

namespace zenlot {

// Needs the QGuiApplication.
void acceptActivation(const Activation& activation);

} // namespace zenlot
