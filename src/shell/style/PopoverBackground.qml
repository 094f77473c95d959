// The surface of what floats above a window: menus, dialogs, tool tips. The shadow is made of
// faint layers, so that it looks the same with every renderer.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Rectangle {
    id: root

    property int depth: 10

    border.color: Theme.separator
    color: Theme.popover
    radius: 9

    Repeater {
        model: root.depth

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.bottomMargin: -index - root.depth / 4
            anchors.leftMargin: -index
            anchors.rightMargin: -index
            anchors.topMargin: -index + root.depth / 4
            color: Qt.rgba(0, 0, 0, Theme.isDark ? 0.024 : 0.006)
            radius: root.radius + index
            z: -1
        }
    }
}
