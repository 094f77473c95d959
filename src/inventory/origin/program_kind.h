// What people know a program as, and what they call what it runs.
#pragma once

#include "inventory/origin/origin_sources.h"

#include <string>

namespace zenlot {

ProgramKind kindOf(const ProcessGlimpse& process);

// Whether the program is somebody's working place, or holds others' programs: it is never ended for
// the sake of a port.
bool isNeverStopped(ProgramKind kind);

// "next dev", "http.server", "manage.py runserver"; the name of the program where nothing shorter
// than its arguments says more.
std::string spokenCommand(const ProcessGlimpse& process);

// Of a runner or watcher, with what it was told to run: "npm run dev", "make serve".
std::string spokenRunner(const ProcessGlimpse& process);

} // namespace zenlot
