// Brings what tells of a wait into view where there is one to tell of: most are over before anybody
// could read it, and it must not flash.
//
//     AppearsLate on opacity {
//         running: item.visible
//     }
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

SequentialAnimation {
    PropertyAction {
        value: 0
    }
    PauseAnimation {
        duration: 250
    }
    NumberAnimation {
        duration: 150 * Theme.motion
        to: 1
    }
}
