// A command of a StyleMenu, with an optional symbol in front and its keys behind.
// `destructive` is for what can't be undone.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.MenuItem {
    id: root

    readonly property color color: root.highlighted ? Theme.accentText : root.destructive ? Theme.red : Theme.label
    property bool destructive: false
    // Those that do the same outside of the menu.
    property string keys: ""
    property string symbol: ""

    Accessible.name: root.text
    Accessible.role: Accessible.MenuItem
    Layout.fillWidth: true
    font: TextStyle.body
    horizontalPadding: 9
    implicitHeight: 26 * TextStyle.scale
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    opacity: root.enabled ? 1 : 0.4
    verticalPadding: 0

    background: Rectangle {
        color: root.highlighted ? Theme.accent : "transparent"
        radius: 5
    }
    contentItem: RowLayout {
        spacing: 8

        SymbolIcon {
            color: root.color
            name: root.symbol
            size: 14 * TextStyle.scale
            visible: root.symbol !== ""
        }
        PlainText {
            Layout.fillWidth: true
            color: root.color
            font: root.font
            text: root.text
        }
        PlainText {
            Layout.leftMargin: 16
            color: root.highlighted ? Theme.accentText : Theme.tertiaryLabel
            font: root.font
            text: TextStyle.keyText(root.keys)
            visible: root.keys !== ""
        }
    }
}
