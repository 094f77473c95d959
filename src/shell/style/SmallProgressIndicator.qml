// A small wheel that turns while something of unknown length goes on, and else shows nothing. For
// people who want nothing to move it stands still.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Item {
    id: root

    property color color: Theme.secondaryLabel
    property bool running: true
    readonly property real side: Math.min(root.width, root.height)
    readonly property int spokes: 8
    property int step

    Accessible.ignored: true
    implicitHeight: 16
    implicitWidth: 16

    NumberAnimation on step {
        duration: 880
        from: 0
        loops: Animation.Infinite
        running: root.running && root.visible && Theme.motion > 0
        to: root.spokes
    }

    // Most wheels stand still; only one that turns has spokes.
    Repeater {
        model: root.running ? root.spokes : 0

        Item {
            id: spoke

            required property int index

            anchors.centerIn: parent
            height: root.side
            opacity: 1 - 0.11 * ((root.step - spoke.index + 2 * root.spokes) % root.spokes)
            rotation: spoke.index * 360 / root.spokes
            width: root.side * 0.125

            Rectangle {
                antialiasing: true
                color: root.color
                height: root.side * 0.29
                radius: width / 2
                width: parent.width
            }
        }
    }
}
