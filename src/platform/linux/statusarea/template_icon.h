// An icon in one colour for the status area.
#pragma once

#include "platform/status_item.h"

#include <QColor>
#include <QIcon>

namespace zenlot {

inline constexpr int kMiddleGrey = 128; // as a brightness

// Drawn from the file at every size that is asked for. Panels that can tint pictures themselves
// are given the name, if the picture is installed under it, and take that first.
QIcon templateIcon(const TemplateImage& image, const QColor& color);

} // namespace zenlot
