// The indicator of a scroll view: thin, and wider under the pointer.
//
//     ListView { T.ScrollBar.vertical: StyleScrollBar {} }
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.ScrollBar {
    id: root

    implicitHeight: 10
    implicitWidth: 10
    minimumSize: 0.08
    padding: 2
    visible: root.policy !== T.ScrollBar.AlwaysOff && root.size < 1

    contentItem: Item {
        Rectangle {
            readonly property real thickness: root.hovered || root.pressed ? 6 : 4

            anchors.bottom: parent.bottom
            anchors.right: parent.right
            color: Theme.tertiaryLabel
            height: root.orientation === Qt.Vertical ? parent.height : thickness
            opacity: root.pressed ? 0.9 : root.hovered ? 0.75 : 0.5
            radius: thickness / 2
            width: root.orientation === Qt.Vertical ? thickness : parent.width
        }
    }
}
