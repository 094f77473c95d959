// Pictures of applications in files that anybody may have made.
#pragma once

#include <QIODevice>
#include <QImage>

namespace zenlot {

// A square picture from a PNG, SVG or XPM file; null for every other one, and for one that is
// larger than any icon.
QImage decodedPicture(QIODevice& file, int sizeInPixels);

} // namespace zenlot
