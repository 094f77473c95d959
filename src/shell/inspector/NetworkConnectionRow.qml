// One TCP socket of the process: its protocol, its two ends and its state.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

Item {
    id: root

    required property string connectionState
    required property string local
    required property string proto
    required property string remote
    required property string summary

    Accessible.name: root.summary
    Accessible.role: Accessible.ListItem
    implicitHeight: line.implicitHeight + 4
    implicitWidth: line.implicitWidth

    RowLayout {
        id: line

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        Badge {
            Accessible.ignored: true
            fill: Theme.quaternaryFill
            horizontalPadding: 5
            radius: 4
            text: root.proto
            tint: Theme.secondaryLabel
            verticalPadding: 1
        }
        PlainText {
            font: TextStyle.monospaced(TextStyle.caption)
            text: root.local
        }
        PlainText {
            color: Theme.tertiaryLabel
            font: TextStyle.caption
            text: "→"
            visible: root.remote !== ""
        }
        PlainText {
            font: TextStyle.monospaced(TextStyle.caption)
            text: root.remote
            visible: root.remote !== ""
        }
        PlainText {
            Layout.fillWidth: true
            color: Theme.secondaryLabel
            font: TextStyle.caption2
            text: root.connectionState
            visible: root.connectionState !== ""
        }
    }
}
