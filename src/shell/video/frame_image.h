// The picture of a video frame, made on the processor. Qt's own conversion first looks for a
// graphics card, starts one in software where there is none, and complains where it can't: too much
// for a small clip, whose pixel format (YUV420P, BT.601) is converted here. Frames of any other
// format are left to Qt.
//
// A frame that can't be read gives a null image.
#pragma once

#include <QImage>
#include <QVideoFrame>

namespace zenlot {

QImage frameImage(QVideoFrame frame);

} // namespace zenlot
