// Rows that leave a list.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Transition {
    NumberAnimation {
        duration: 200 * Theme.motion
        property: "opacity"
        to: 0
    }
}
