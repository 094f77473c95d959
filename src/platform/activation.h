// What a desktop hands to the program that its user wants to see next, so that the program's window
// may take the keyboard from the one that has it. Either text may be empty; both are opaque.
#pragma once

#include <QString>

namespace zenlot {

struct Activation {
    QString startupId; // X11: names the start, and holds the time of the user's click
    QString token;     // Wayland: to be shown to the compositor once

    friend bool operator==(const Activation&, const Activation&) = default;
};

} // namespace zenlot
