// How a search names a result of ours. The name holds the query, since the desktop may come back to
// it long after the program that found it has ended.
//
//     ":3000"      that port
//     "request"    a question that has named no port yet
#pragma once

#include "shell/intents/port_query.h"

#include <QString>

#include <optional>

namespace zenlot {

QString resultIdentifier(const PortQuery& query);

// None for anything that the function above does not return.
std::optional<PortQuery> queryOfResult(const QString& identifier);

} // namespace zenlot
