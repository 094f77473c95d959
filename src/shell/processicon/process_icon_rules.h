// Which icon stands for a program, told from the path of its executable. Nothing here reads disks,
// but for the workspace that is asked.
#pragma once

#include "platform/workspace.h"

#include <QString>

#include <optional>

namespace zenlot {

// Whether the path names a JavaScript runtime: "node" and what begins with it, "npm", "npx", "bun"
// or "deno", in upper or lower case.
bool isDevRuntime(const QString& path);

// The outermost application bundle that holds the path or is the path itself, such as
// /Applications/Outer.app; none outside of bundles.
std::optional<QString> outermostAppBundle(const QString& path);

// The icon of that bundle.
std::optional<QString> outermostAppIcon(const QString& path, const Workspace& workspace);

} // namespace zenlot
