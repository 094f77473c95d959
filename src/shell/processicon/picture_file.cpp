#include "shell/processicon/picture_file.h"

#include <QImageReader>

#include <algorithm>
#include <array>

namespace zenlot {
namespace {

constexpr int kLargestSide = 4096; // of a picture, so that none takes all memory
constexpr qint64 kMaximumFileBytes = qint64{16} * 1024 * 1024;

// What icon themes are made of. Readers of other formats have seen less of the world.
constexpr std::array kFormats{"png", "svg", "svgz", "xpm"};

} // namespace

QImage decodedPicture(QIODevice& file, int sizeInPixels) {
    if (file.size() > kMaximumFileBytes)
        return {};
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (std::ranges::find(kFormats, format) == kFormats.end())
        return {};
    const QSize size = reader.size();
    if (size.width() > kLargestSide || size.height() > kLargestSide)
        return {};
    // A drawing is made in the very size; what is made of pixels is scaled with care.
    const QSize wanted(sizeInPixels, sizeInPixels);
    if (format.startsWith("svg"))
        reader.setScaledSize(wanted);
    const QImage picture = reader.read();
    return picture.isNull()
               ? picture
               : picture.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace zenlot
