// A terminal in which a server can't start, and then can.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.OnboardingClip

Item {
    id: root

    property alias linesOpacity: lines.opacity
    property bool cursorShown: true
    readonly property int radius: 9

    // How far each line has come, from 0 to 1.
    property real firstTyping: 0
    property real failing: 0
    property real failed: 0
    property real secondTyping: 0
    property real starting: 0
    property real started: 0

    Repeater {
        model: 12

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -index
            anchors.topMargin: 4 - index
            color: Qt.rgba(0.02, 0.03, 0.14, 0.035)
            radius: root.radius + index
        }
    }
    Rectangle {
        anchors.fill: parent
        border.color: Qt.rgba(1, 1, 1, 0.14)
        color: "#171a29"
        radius: root.radius
    }
    Row {
        spacing: 6
        x: 11
        y: 9

        Repeater {
            model: ["#ff6159", "#ffbd2e", "#29c941"]

            Rectangle {
                required property string modelData

                color: modelData
                height: 8
                radius: 4
                width: 8
            }
        }
    }
    Column {
        id: lines

        x: 13
        y: 27

        TerminalLine {
            cursor: root.failing === 0 && (root.cursorShown || root.firstTyping > 0)
            prompt: true
            shown: root.firstTyping
            text: "npm run dev"
        }
        TerminalLine {
            color: "#9aa2bf"
            shown: root.failing
            text: "  starting on port 3000 …"
        }
        TerminalLine {
            color: "#ff7d78"
            shown: root.failed
            text: "✗ Error: port 3000 is already in use"
        }
        TerminalLine {
            cursor: root.starting === 0 && (root.cursorShown || root.secondTyping > 0)
            prompt: true
            shown: root.secondTyping
            text: "npm run dev"
            visible: root.failed > 0
        }
        TerminalLine {
            color: "#9aa2bf"
            shown: root.starting
            text: "  starting on port 3000 …"
        }
        TerminalLine {
            color: "#5fe08c"
            shown: root.started
            text: "✓ ready at http://localhost:3000"
        }
    }
}
