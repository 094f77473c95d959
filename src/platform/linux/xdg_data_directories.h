// The folders with the data that programs install, the more important first: the user's own, then
// those of XDG_DATA_DIRS that are absolute, or /usr/local/share and /usr/share where it names none.
#pragma once

#include "platform/home_directories.h"

#include <QProcessEnvironment>
#include <QStringList>

namespace zenlot {

QStringList xdgDataDirectories(
    const HomeDirectories& home,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

} // namespace zenlot
