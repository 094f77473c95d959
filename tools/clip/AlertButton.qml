// An answer to the alert, as it looks when a pointer is on it or presses it.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Capsule {
    id: root

    property bool down: false
    property bool hovered: false
    required property string text
    property color tint: Theme.label

    color: Qt.rgba(0, 0, 0, 0.08)
    implicitHeight: 23
    implicitWidth: Math.ceil(label.implicitWidth) + 18
    scale: root.down ? 0.96 : 1

    Capsule {
        anchors.bottomMargin: 1
        anchors.fill: parent
        border.color: root.hovered ? Qt.alpha(root.tint, 0.35) : Theme.separator
        color: root.down ? Qt.tint("white", Qt.alpha(root.tint, 0.26)) : root.hovered ? Qt.tint("white", Qt.alpha(root.tint, 0.12)) : "white"
    }
    StyleText {
        id: label

        anchors.centerIn: parent
        anchors.verticalCenterOffset: -0.5
        color: root.tint
        font: TextStyle.sized(11, Font.Medium)
        text: root.text
    }
}
