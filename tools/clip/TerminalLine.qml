// A line of the terminal, of which the first `shown` characters are there.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Row {
    id: root

    property color color: "#e6e8f2"
    property bool cursor: false
    property bool prompt: false
    property real shown: 0
    property string text: ""

    height: 16
    spacing: 0

    StyleText {
        color: "#7fa8ff"
        font.family: "JetBrains Mono"
        font.pixelSize: 11
        text: "~/shop ❯ "
        visible: root.prompt
    }
    StyleText {
        color: root.color
        font.family: "JetBrains Mono"
        font.pixelSize: 11
        text: root.text.substring(0, Math.floor(root.shown * root.text.length))
    }
    Rectangle {
        color: "#aab4d8"
        height: 13
        visible: root.cursor
        width: 7
        y: 1
    }
}
