// One tab: a symbol above its label. Of the tabs only the one in front is a stop of the Tab key; the
// arrow keys lead to the others.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.TabButton {
    id: root

    readonly property color color: root.checked ? Theme.blue : Theme.secondaryLabel
    required property string symbol

    Accessible.name: root.text
    Accessible.role: Accessible.PageTab
    Accessible.selected: root.checked
    Accessible.onPressAction: root.checked = true
    focusPolicy: root.checked || root.activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    font: TextStyle.sized(11 * TextStyle.scale, Font.Medium)
    hoverEnabled: true
    horizontalPadding: 12
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: Math.max(72 * TextStyle.scale, implicitContentWidth + leftPadding + rightPadding)
    verticalPadding: 6

    background: Rectangle {
        color: root.checked ? Theme.quaternaryFill : root.hovered ? Theme.hover : "transparent"
        radius: 7
    }
    contentItem: ColumnLayout {
        spacing: 3

        SymbolIcon {
            Layout.alignment: Qt.AlignHCenter
            color: root.color
            name: root.symbol
            size: 20
        }
        StyleText {
            Accessible.ignored: true
            Layout.alignment: Qt.AlignHCenter
            color: root.color
            font: root.font
            text: root.text
        }
    }

    FocusRing {
        anchors.margins: 0
        radius: 7
    }
}
