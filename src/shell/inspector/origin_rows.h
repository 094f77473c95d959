// What is known of a server's origin, as rows of the inspector.
#pragma once

#include "inventory/origin/origin.h"
#include "shell/inspector/detail_row_model.h"

#include <QList>

namespace zenlot {

// Its project, what runs, and where.
QList<DetailRow> projectRows(const Origin& origin);

// Who started it, what it belongs to, whom it lets in, and who uses it.
QList<DetailRow> originRows(const Origin& origin);

} // namespace zenlot
