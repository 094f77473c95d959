// The home directories by the rules for base directories of desktop programs.
//
// HOME is the home, or the user database where HOME is missing or relative, or "/" where neither
// knows one. XDG_CONFIG_HOME, XDG_STATE_HOME and XDG_DATA_HOME count only when absolute; otherwise
// ~/.config, ~/.local/state and ~/.local/share take their place.
#pragma once

#include "platform/home_directories.h"

#include <QProcessEnvironment>

namespace zenlot {

HomeDirectories xdgHomeDirectories(
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

} // namespace zenlot
