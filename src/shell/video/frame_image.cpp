#include "shell/video/frame_image.h"

#include <QRgb>

#include <algorithm>

namespace zenlot {
namespace {

// From fixed point with sixteen bits behind it.
int channel(int value) {
    return std::clamp((value + (1 << 15)) >> 16, 0, 255);
}

// BT.601: the brightness is between 16 and 235, both differences of colour are around 128.
QRgb rgbOf(int brightness, int blueDifference, int redDifference) {
    const int y = (brightness - 16) * 76'309;
    const int u = blueDifference - 128;
    const int v = redDifference - 128;
    return qRgb(channel(y + v * 104'597), channel(y - u * 25'675 - v * 53'279),
                channel(y + u * 132'201));
}

} // namespace

QImage frameImage(QVideoFrame frame) {
    if (frame.pixelFormat() != QVideoFrameFormat::Format_YUV420P)
        return frame.toImage();
    if (!frame.map(QVideoFrame::ReadOnly))
        return {};
    QImage image(frame.size(), QImage::Format_RGB32);
    const auto line = [&frame](int plane, qsizetype row) {
        return frame.bits(plane) + row * frame.bytesPerLine(plane);
    };
    for (int row = 0; row < image.height(); ++row) {
        const uchar* brightness = line(0, row);
        const uchar* blue = line(1, row / 2);
        const uchar* red = line(2, row / 2);
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column)
            pixels[column] = rgbOf(brightness[column], blue[column / 2], red[column / 2]);
    }
    frame.unmap();
    return image;
}

} // namespace zenlot
