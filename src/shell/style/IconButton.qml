// A button that shows a symbol only; its text is its accessible name, and its tool tip unless
// another one is given.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.AbstractButton {
    id: root

    property color color: Theme.label
    required property string symbol
    property real symbolSize: 16
    property string toolTip: root.text

    Accessible.name: root.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: root.clicked()
    font: TextStyle.body
    hoverEnabled: true
    implicitHeight: 28
    implicitWidth: 32
    opacity: root.enabled ? 1 : 0.4

    background: Rectangle {
        color: root.down ? Theme.pressed : root.hovered || root.checked ? Theme.hover : "transparent"
        radius: 7
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            color: root.color
            name: root.symbol
            size: root.symbolSize
        }
    }

    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    FocusRing {
        anchors.margins: 0
        radius: 7
    }
    StyleToolTip {
        text: root.toolTip
        visible: root.toolTip !== "" && (root.hovered || root.visualFocus) && !root.down
    }
}
