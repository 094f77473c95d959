// A titled box that opens and closes. Whether it is open belongs to its owner: a click only emits
// toggled(), so that a binding of `expanded` holds.
//
//     CollapsibleSection {
//         expanded: model.identityExpanded
//         title: "Identity"
//         onToggled: model.identityExpanded = !model.identityExpanded
//
//         StyleText { text: "in a column, from the leading edge" }
//     }
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

Item {
    id: root

    default property alias content: column.data
    property bool expanded: true
    // From closed (0) to open (1).
    property real openness: root.expanded ? 1 : 0
    property string title: ""

    signal toggled

    implicitHeight: header.height + body.height
    implicitWidth: Math.max(header.implicitWidth, column.implicitWidth + 25)

    Behavior on openness {
        NumberAnimation {
            duration: 180 * Theme.motion
            easing.type: Easing.InOutQuad
        }
    }

    T.AbstractButton {
        id: header

        Accessible.description: root.expanded ? qsTr("open") : qsTr("closed")
        Accessible.name: root.title
        Accessible.role: Accessible.Button
        font: TextStyle.bold(TextStyle.caption)
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        implicitWidth: implicitContentWidth
        verticalPadding: 2
        width: Math.min(implicitWidth, root.width)

        contentItem: RowLayout {
            spacing: 5

            SymbolIcon {
                color: Theme.secondaryLabel
                name: "chevron.right"
                rotation: 90 * root.openness
                size: 10 * TextStyle.scale
            }
            PlainText {
                Layout.fillWidth: true
                color: Theme.secondaryLabel
                font.bold: true
                font.capitalization: Font.AllUppercase
                font.family: header.font.family
                font.pixelSize: header.font.pixelSize
                text: root.title
            }
        }

        Keys.onEnterPressed: root.toggled()
        Keys.onReturnPressed: root.toggled()
        onClicked: root.toggled()

        FocusRing {
            anchors.leftMargin: -4
            anchors.rightMargin: -4
            radius: 5
        }
    }
    Item {
        id: body

        anchors.top: header.bottom
        clip: root.openness < 1
        height: (box.height + 5) * root.openness
        visible: root.openness > 0
        width: root.width

        Rectangle {
            id: box

            color: Theme.card
            height: column.implicitHeight + 20
            opacity: root.openness
            radius: 8
            scale: 0.97 + 0.03 * root.openness
            transformOrigin: Item.Top
            width: parent.width
            y: 5

            ColumnLayout {
                id: column

                anchors.fill: parent
                anchors.leftMargin: 15 // where the title begins
                anchors.margins: 10
                spacing: 4
            }
        }
    }
}
