// What "ignore from now on" means: one entry on the list of the port monitor and one on the list of
// conflicts, so that neither speaks of it again.
//
// A list that has the entry stays as it is. Otherwise the entry is added and the list assigned, in
// ascending order; names are ordered by code points and compared exactly.
//
//     ignorePort(settings, 8080);
//     ignoreProcess(settings, u"node"_s);
#pragma once

#include "settings/app_settings.h"

#include <QString>
#include <QtGlobal>

namespace zenlot {

void ignorePort(AppSettings& settings, qint64 port);

void ignoreProcess(AppSettings& settings, const QString& name);

} // namespace zenlot
