// A button that shows a symbol only; its text is its accessible name, and its tool tip unless
// another one is given.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.AbstractButton {
    id: root

    property color color: Theme.label
    // Those that do the same; the tool tip names them.
    property string keys: ""
    // Whether `checked`, which belongs to its owner, is to be seen.
    property bool showsState: false
    required property string symbol
    property real symbolSize: 16 * TextStyle.scale
    property string toolTip: root.text

    Accessible.checkable: root.showsState
    Accessible.checked: root.checked
    Accessible.name: root.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: root.clicked()
    font: TextStyle.body
    hoverEnabled: true
    implicitHeight: 28 * TextStyle.scale
    implicitWidth: 32 * TextStyle.scale
    opacity: root.enabled ? 1 : 0.4

    background: Rectangle {
        color: root.down ? Theme.pressed : root.hovered || root.checked ? Theme.hover : "transparent"
        radius: 7
    }
    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            color: root.showsState && root.checked ? Theme.focus : root.color
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
        isShown: root.toolTip !== "" && (root.hovered || root.visualFocus) && !root.down
        text: root.keys === "" ? root.toolTip : "%1 (%2)".arg(root.toolTip).arg(TextStyle.keyText(root.keys))
    }
}
