// Something that the user can have the program do, from whatever surface: a menu of ours, the menu
// of a panel, the entry of the desktop's menus, a key. The surfaces draw what stands here and run
// it.
#pragma once

#include <QString>

#include <functional>

namespace zenlot {

struct Command {
    QString identifier{};        // by which others ask for it; empty for what only menus offer
    QString title{};             // plain text; empty for the line between two groups
    QString keyEquivalent{};     // shown behind the title, in the form of QKeySequence: "Ctrl+Q"
    QString symbol{};            // one of our own, in menus that we draw
    QString symbolDescription{}; // what it tells those who see it
    std::function<void()> run{}; // none for a title that does nothing
    bool isEnabled{true};
};

// The identifiers that others know: the desktop's entry of the program has them for its actions,
// and the program for its options, "--settings".
inline constexpr QLatin1StringView kCheckPortCommand{"check-port"};
inline constexpr QLatin1StringView kSettingsCommand{"settings"};
inline constexpr QLatin1StringView kQuitCommand{"quit"};

} // namespace zenlot
