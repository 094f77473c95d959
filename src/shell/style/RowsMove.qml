// Rows of a list that make room for others, or are put elsewhere. Those that were still about to
// appear do so.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Transition {
    NumberAnimation {
        duration: 200 * Theme.motion
        easing.type: Easing.InOutQuad
        property: "y"
    }
    NumberAnimation {
        duration: 200 * Theme.motion
        property: "opacity"
        to: 1
    }
}
