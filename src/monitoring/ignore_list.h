// How the names on the user's ignore lists are compared with those of processes and applications.
//
//     matchesIgnoredName(u"postgres-server"_s, u"Postgres"_s); // true
//     matchesIgnoredName(u"Docker"_s, u"Docker Desktop"_s);    // true
//
// A pure function; any thread may use it.
#pragma once

#include <QString>

namespace zenlot {

// Whether one of the two contains the other, both in lower case. An empty string matches nothing.
// Letters are compared by code point: no accent is dropped and no form is normalised.
bool matchesIgnoredName(const QString& name, const QString& entry);

} // namespace zenlot
