// The alert about a conflict.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.OnboardingClip
import Zenlot.Style

Item {
    id: root

    property bool killDown: false
    property bool killHovered: false
    readonly property point killPoint: Qt.point(root.x + answers.x + kill.width * 0.62, root.y + answers.y + 13)

    implicitHeight: answers.y + answers.height + 11
    implicitWidth: answers.width + 24

    Repeater {
        model: 14

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -index
            anchors.topMargin: 5 - index
            color: Qt.rgba(0.02, 0.03, 0.14, 0.03)
            radius: 13 + index
        }
    }
    Rectangle {
        anchors.fill: parent
        border.color: Qt.rgba(1, 1, 1, 0.9)
        color: Theme.popover
        radius: 13
    }
    Image {
        height: 36
        source: "qrc:/pictures/dev.quorvane.zenlot.svg"
        sourceSize.height: 72
        sourceSize.width: 72
        width: 36
        x: 10
        y: 11
    }
    StyleText {
        id: title

        font: TextStyle.sized(12, Font.DemiBold)
        text: "Port 3000 is already in use"
        x: 54
        y: 12
    }
    StyleText {
        id: message

        anchors.top: title.bottom
        anchors.topMargin: 2
        color: Theme.secondaryLabel
        font: TextStyle.sized(11, Font.Normal)
        lineHeight: 1.1
        text: "node (PID 4127) is blocking port 3000 — kill it to free the port."
        width: root.width - x - 14
        wrapMode: Text.Wrap
        x: 54
    }
    Row {
        id: answers

        anchors.top: message.bottom
        anchors.topMargin: 9
        spacing: 6
        x: 12

        AlertButton {
            id: kill

            down: root.killDown
            hovered: root.killHovered
            text: "Kill Process"
            tint: Theme.red
        }
        AlertButton {
            text: "Ignore Port"
        }
        AlertButton {
            text: "Ignore Process"
        }
    }
}
