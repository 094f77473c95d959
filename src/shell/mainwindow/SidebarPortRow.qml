// One listening port of the sidebar, or the heading above some.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ItemDelegate {
    id: root

    readonly property color textColor: root.highlighted ? root.palette.highlightedText : root.palette.windowText
    required property string displayName
    required property string heading
    required property bool isSelected
    required property int port
    required property string proto

    Accessible.name: root.heading || root.port + " " + root.displayName + " " + root.proto
    Accessible.role: root.heading ? Accessible.StaticText : Accessible.ListItem
    bottomPadding: 4
    enabled: root.heading === ""
    highlighted: isSelected
    leftPadding: 12
    rightPadding: 12
    topPadding: root.heading ? 10 : 4

    contentItem: RowLayout {
        spacing: 8

        Label {
            font.bold: true
            font.pixelSize: 10
            opacity: 0.7
            text: root.heading
            visible: root.heading !== ""
        }
        ColumnLayout {
            spacing: 1
            visible: root.heading === ""

            Label {
                color: root.textColor
                font.bold: true
                font.family: "monospace"
                font.pixelSize: 12
                text: root.port
            }
            Label {
                Layout.fillWidth: true
                color: root.textColor
                elide: Text.ElideRight
                font.pixelSize: 10
                maximumLineCount: 1
                opacity: 0.75
                text: root.displayName
                textFormat: Text.PlainText
            }
        }
        Label {
            color: root.textColor
            font.pixelSize: 9
            font.weight: Font.Medium
            opacity: 0.6
            text: root.proto
        }
    }
}
