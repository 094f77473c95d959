// One process that holds the checked port.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

Control {
    id: root

    required property string displayName
    required property bool isSelected
    required property string localAddress
    required property string pidText
    required property string processState
    required property string proto
    required property string user

    Accessible.name: root.displayName + " " + root.proto + " " + root.processState + " " + root.pidText
    Accessible.role: Accessible.ListItem
    bottomPadding: 7
    leftPadding: 16
    rightPadding: 16
    topPadding: 7

    background: Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        color: root.palette.highlight
        opacity: root.isSelected ? 0.14 : 0
        radius: 7
    }
    contentItem: ColumnLayout {
        spacing: 2

        RowLayout {
            spacing: 5

            Label {
                Layout.fillWidth: true
                elide: Text.ElideRight
                font.bold: true
                font.pixelSize: 12
                maximumLineCount: 1
                text: root.displayName
                textFormat: Text.PlainText
            }
            Label {
                font.bold: true
                font.pixelSize: 10
                text: root.proto
                textFormat: Text.PlainText
            }
            Label {
                font.bold: true
                font.pixelSize: 10
                text: root.processState
                textFormat: Text.PlainText
            }
            Label {
                font.family: "monospace"
                font.pixelSize: 10
                opacity: 0.6
                text: root.pidText
                visible: text !== ""
            }
        }
        RowLayout {
            Label {
                font.family: "monospace"
                font.pixelSize: 10
                opacity: 0.75
                text: root.localAddress
            }
            Label {
                font.pixelSize: 10
                opacity: 0.6
                text: root.user
                textFormat: Text.PlainText
            }
        }
    }
}
