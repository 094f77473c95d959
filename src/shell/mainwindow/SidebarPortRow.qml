// One listening port of the sidebar.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.ProcessIcon
import Zenlot.Style

Item {
    id: root

    required property string executablePath
    readonly property bool hasLine: (root.showIcon && root.name !== "") || root.noteText !== "" || root.isOpenToNetwork || root.isLeftBehind
    property alias isElided: label.truncated
    required property bool isLeftBehind
    required property bool isOpenToNetwork
    required property string name
    required property string noteText
    required property int pid
    required property int port
    required property string proto
    required property bool showIcon

    implicitHeight: Math.max(lines.implicitHeight, root.showIcon ? icon.height : 0)

    ProcessIconView {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        cornerRadius: 5
        executablePath: root.executablePath
        height: size
        pid: root.pid
        size: 22
        visible: root.showIcon
        width: size
    }
    // Its height is known at once, as a positioner's isn't: a list counts on it.
    Item {
        id: lines

        anchors.left: parent.left
        anchors.leftMargin: root.showIcon ? icon.width + 8 : 0
        anchors.right: proto.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: number.implicitHeight + (root.hasLine ? 1 + line.implicitHeight : 0)

        PlainText {
            id: number

            font: TextStyle.bold(TextStyle.monospaced(TextStyle.callout))
            text: root.port
            width: lines.width
        }
        // The name keeps its room, the note gives way.
        Item {
            id: line

            implicitHeight: Math.max(label.implicitHeight, note.implicitHeight)
            visible: root.hasLine
            width: lines.width
            y: number.implicitHeight + 1

            PlainText {
                id: label

                color: Theme.secondaryLabel
                font: TextStyle.caption
                text: root.showIcon ? root.name : ""
                width: Math.min(Math.ceil(implicitWidth), line.width)
            }
            OriginNoteLine {
                id: note

                isLeftBehind: root.isLeftBehind
                isOpenToNetwork: root.isOpenToNetwork
                text: root.noteText
                // Where the marks have no room the tool tip still tells.
                visible: width >= marksWidth
                width: line.width - x
                x: label.text === "" ? 0 : label.width + 5
            }
        }
    }
    PlainText {
        id: proto

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        font: TextStyle.sized(9 * TextStyle.scale, Font.Medium)
        text: root.proto
    }
}
