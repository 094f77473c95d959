// Why a port can't be had although nobody listens on it, as the window tells it.
#pragma once

#include "inventory/origin/bind_obstacle.h"

#include <QString>

#include <span>

namespace zenlot {

// A line for each of the first few; empty without any. Plain text.
QString obstaclesText(std::span<const BindObstacle> obstacles);

} // namespace zenlot
