// Rows that come into a list.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Transition {
    NumberAnimation {
        duration: 200 * Theme.motion
        from: 0
        property: "opacity"
        to: 1
    }
}
