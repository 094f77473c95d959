// Which page of how many.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Row {
    id: root

    required property int count
    required property int current

    spacing: 6

    Repeater {
        model: root.count

        Rectangle {
            id: dot

            required property int index

            color: dot.index === root.current ? Theme.label : Qt.alpha(Theme.secondaryLabel, 0.35)
            height: 6
            radius: 3
            width: 6

            Behavior on color {
                ColorAnimation {
                    duration: 200 * Theme.motion
                }
            }
        }
    }
}
