// The name of a process with its badges and its pid. Where there is little room the name matters
// most. It is no RowLayout because those of this Qt don't always notice what appears and disappears
// with their width.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

Item {
    id: root

    required property string displayName
    property alias isElided: name.truncated
    required property string pidText
    required property string processState
    required property string proto
    required property int stateTint

    implicitHeight: labels.implicitHeight

    Row {
        id: labels

        spacing: 5

        PlainText {
            id: name

            readonly property real room: root.width - protoBadge.width - 5 - (stateBadge.visible ? stateBadge.width + 5 : 0) - (pidLabel.visible ? pidLabel.width + 5 : 0)

            anchors.verticalCenter: parent.verticalCenter
            font: TextStyle.bold(TextStyle.callout)
            text: root.displayName
            width: Math.max(0, Math.min(Math.ceil(implicitWidth), room))
        }
        Badge {
            id: protoBadge

            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
            text: root.proto
            tint: Theme.blue
        }
        Badge {
            id: stateBadge

            Accessible.ignored: true
            anchors.verticalCenter: parent.verticalCenter
            text: root.processState
            tint: root.stateTint === ProcessListModel.Green ? Theme.green : root.stateTint === ProcessListModel.Blue ? Theme.blue : root.stateTint === ProcessListModel.Orange ? Theme.orange : Theme.secondaryLabel
            visible: root.processState !== "" && root.width >= 170
        }
    }
    PlainText {
        id: pidLabel

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        font: TextStyle.monospaced(TextStyle.caption2)
        text: root.pidText
        visible: text !== "" && root.width >= 230
    }
}
