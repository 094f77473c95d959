// The command that lifts the block, to be copied into a terminal.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.BackgroundItems
import Zenlot.Style

Rectangle {
    id: root

    required property BackgroundItemsViewModel viewModel

    border.color: Theme.separator
    color: Theme.field
    implicitHeight: column.implicitHeight + 20
    radius: 10

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.bottomMargin: 10
        anchors.leftMargin: 14
        anchors.rightMargin: 10
        anchors.topMargin: 10
        spacing: 4

        RowLayout {
            StyleText {
                Layout.fillWidth: true
                color: Theme.secondaryLabel
                font: TextStyle.callout
                text: qsTr("To allow it, run this in a terminal:")
            }
            GlassButton {
                symbol: root.viewModel.isCopied ? "checkmark.circle.fill" : ""
                text: root.viewModel.isCopied ? qsTr("Copied") : qsTr("Copy")

                onClicked: root.viewModel.copyCommand()
            }
        }
        SelectableText {
            Accessible.description: qsTr("Command")
            Layout.fillWidth: true
            Layout.leftMargin: -4
            font: TextStyle.monospaced(TextStyle.callout)
            padding: 4
            text: root.viewModel.command
        }
    }
}
