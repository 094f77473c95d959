// What lies behind a row of the sidebar: that the pointer is over it, that it is selected, that it has
// the keyboard.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Item {
    id: root

    required property bool hasFocusRing
    required property bool isHovered
    required property bool isSelected

    SelectedRowMark {
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        visible: root.isSelected
    }
    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        border.color: Theme.focus
        border.width: root.hasFocusRing ? 2 : 0
        color: root.isHovered && !root.isSelected ? Theme.hover : "transparent"
        radius: 7
        visible: root.hasFocusRing || root.isHovered
    }
}
