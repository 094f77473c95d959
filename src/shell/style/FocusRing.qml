// The ring around what has the keyboard. Put into a control it shows while the keyboard is what
// brought the focus there; anything else sets `visible` itself.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

Rectangle {
    id: root

    readonly property T.Control control: root.parent as T.Control

    Accessible.ignored: true
    anchors.fill: root.parent
    anchors.margins: -2
    border.color: Theme.focus
    border.width: 2
    color: "transparent"
    radius: 8
    visible: root.control !== null && root.control.visualFocus
    z: 1
}
