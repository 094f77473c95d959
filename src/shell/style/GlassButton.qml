// A button on a capsule that lets a little of what lies below shine through. `tint` colours its
// words and symbol, `prominent` fills it with the accent colour, `large` is for a page's main
// action. In less `room` than the words need, the symbol stands alone.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.AbstractButton {
    id: root

    // Those that do the same; the tool tip names them.
    property string keys: ""
    property bool large: false
    property bool prominent: false
    property real room: Infinity
    property string symbol: ""
    property color tint: root.prominent ? Theme.accentText : Theme.label
    property string toolTip: ""

    Accessible.name: root.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: root.clicked()
    font: root.large ? TextStyle.headline : TextStyle.sized(12 * TextStyle.scale, Font.Medium)
    horizontalPadding: root.large ? 18 : 12
    hoverEnabled: true
    implicitHeight: (root.large ? 36 : 28) * TextStyle.scale
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    opacity: root.enabled ? 1 : 0.4
    verticalPadding: 0

    // The edge below, the glass, and what a pointer or a finger does to it.
    background: Capsule {
        color: Theme.isDark ? "transparent" : Qt.rgba(0, 0, 0, 0.08)

        Capsule {
            anchors.bottomMargin: 1
            anchors.fill: parent
            border.color: root.prominent ? "transparent" : Theme.separator
            color: root.prominent ? Theme.accent : Theme.glass
        }
        Capsule {
            anchors.bottomMargin: 1
            anchors.fill: parent
            color: root.down ? Theme.pressed : Theme.hover
            visible: root.down || root.hovered
        }
    }
    contentItem: SymbolLabel {
        Accessible.ignored: true
        color: root.tint
        font: root.font
        symbol: root.symbol
        text: root.symbol !== "" && root.room < words.advanceWidth + words.font.pixelSize + 32 ? "" : root.text
    }

    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    // At some distance where the button has the colour of the ring.
    FocusRing {
        anchors.margins: root.prominent ? -4 : -2
        radius: height / 2
    }
    TextMetrics {
        id: words

        font: root.font
        text: root.text
    }
    StyleToolTip {
        isShown: root.toolTip !== "" && (root.hovered || root.visualFocus) && !root.down
        text: root.keys === "" ? root.toolTip : "%1 (%2)".arg(root.toolTip).arg(TextStyle.keyText(root.keys))
    }
}
