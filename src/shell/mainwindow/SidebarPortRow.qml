// One listening port of the sidebar.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.ProcessIcon
import Zenlot.Style

RowLayout {
    id: root

    required property string executablePath
    property alias isElided: label.truncated
    required property bool isLeftBehind
    required property bool isOpenToNetwork
    required property string name
    required property string noteText
    required property int pid
    required property int port
    required property string proto
    required property bool showIcon

    spacing: 8

    ProcessIconView {
        cornerRadius: 5
        executablePath: root.executablePath
        pid: root.pid
        size: 22
        visible: root.showIcon
    }
    ColumnLayout {
        spacing: 1

        StyleText {
            Accessible.ignored: true
            Layout.fillWidth: true
            font: TextStyle.bold(TextStyle.monospaced(TextStyle.callout))
            text: root.port
        }
        // The name keeps its room, the note gives way. It is no RowLayout for the reason that
        // ProcessTitle gives.
        Item {
            id: line

            Layout.fillWidth: true
            implicitHeight: Math.max(label.implicitHeight, note.implicitHeight)
            visible: (root.showIcon && root.name !== "") || root.noteText !== "" || root.isOpenToNetwork || root.isLeftBehind

            StyleText {
                id: label

                Accessible.ignored: true
                color: Theme.secondaryLabel
                font: TextStyle.caption
                text: root.showIcon ? root.name : ""
                width: Math.min(Math.ceil(implicitWidth), line.width)
            }
            OriginNoteLine {
                id: note

                // Where the marks have no room the tool tip still tells.
                visible: line.width >= label.width + anchors.leftMargin + note.marksWidth
                anchors.left: label.right
                anchors.leftMargin: label.text === "" ? 0 : 5
                anchors.right: line.right
                isLeftBehind: root.isLeftBehind
                isOpenToNetwork: root.isOpenToNetwork
                text: root.noteText
            }
        }
    }
    StyleText {
        Accessible.ignored: true
        color: Theme.tertiaryLabel
        font: TextStyle.sized(9 * TextStyle.scale, Font.Medium)
        text: root.proto
    }
}
