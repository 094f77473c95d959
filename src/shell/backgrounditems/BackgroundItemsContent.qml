// Whether the background monitor may run, what to do when it may not, and how that stands now.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.BackgroundItems
import Zenlot.Style

FocusScope {
    id: root

    readonly property color statusColor: root.viewModel.isAllowed ? Theme.vividGreen : root.viewModel.isBlocked ? Theme.vividOrange : Theme.tertiaryLabel
    required property BackgroundItemsViewModel viewModel

    signal dismissed

    focus: true
    implicitHeight: column.implicitHeight + 44
    implicitWidth: 540 * TextStyle.scale

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]

        onActivated: root.dismissed()
    }
    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: 24
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 0

        RowLayout {
            spacing: 16

            SymbolIcon {
                Layout.alignment: Qt.AlignTop
                color: root.statusColor
                name: root.viewModel.isAllowed ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
                size: 40
            }
            ColumnLayout {
                spacing: 0

                StyleText {
                    Accessible.role: Accessible.Heading
                    Layout.fillWidth: true
                    font: TextStyle.bold(TextStyle.title3)
                    text: root.viewModel.headline
                    wrapMode: Text.Wrap
                }
                StyleText {
                    Layout.fillWidth: true
                    Layout.topMargin: 3
                    color: Theme.secondaryLabel
                    elide: Text.ElideMiddle
                    font: TextStyle.monospaced(TextStyle.caption)
                    text: root.viewModel.unit
                }
                StyleText {
                    Layout.fillWidth: true
                    Layout.topMargin: 10
                    color: Theme.secondaryLabel
                    lineHeight: 1.15
                    text: root.viewModel.explanation
                    wrapMode: Text.Wrap
                }
            }
        }
        CommandCard {
            Layout.fillWidth: true
            Layout.topMargin: 18
            viewModel: root.viewModel
            visible: root.viewModel.isBlocked
        }
        SelectableText {
            Layout.fillWidth: true
            Layout.leftMargin: 52
            Layout.topMargin: 8
            color: Theme.red
            font: TextStyle.callout
            padding: 4
            text: root.viewModel.problem
            visible: root.viewModel.problem !== ""
        }
        Divider {
            Layout.fillWidth: true
            Layout.topMargin: 20
        }
        RowLayout {
            Layout.topMargin: 14
            spacing: 8

            Rectangle {
                color: root.statusColor
                implicitHeight: 8
                implicitWidth: 8
                radius: 4
            }
            StyleText {
                Layout.fillWidth: true
                color: Theme.secondaryLabel
                font: TextStyle.callout
                text: root.viewModel.statusText
            }
            GlassButton {
                prominent: true
                text: qsTr("Turn On")
                visible: root.viewModel.canTurnOn

                onClicked: root.viewModel.turnOn()
            }
            GlassButton {
                focus: true
                prominent: !root.viewModel.isAllowed && !root.viewModel.canTurnOn
                text: qsTr("Re-check")

                onClicked: root.viewModel.recheck()
            }
            GlassButton {
                prominent: root.viewModel.isAllowed
                text: qsTr("Done")

                onClicked: root.dismissed()
            }
        }
    }
}
