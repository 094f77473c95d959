// The clip of the second page. What plays it is loaded with this file, and so not before it is shown.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style
import Zenlot.Video

LoopingVideoView {
    Accessible.ignored: true
    isMoving: Theme.motion > 0
    radius: 10
}
