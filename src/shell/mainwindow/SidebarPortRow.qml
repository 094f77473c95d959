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
    required property string name
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
        StyleText {
            id: label

            Accessible.ignored: true
            Layout.fillWidth: true
            color: Theme.secondaryLabel
            font: TextStyle.caption
            text: root.name
            visible: root.showIcon && text !== ""
        }
    }
    StyleText {
        Accessible.ignored: true
        color: Theme.tertiaryLabel
        font: TextStyle.sized(9, Font.Medium)
        text: root.proto
    }
}
