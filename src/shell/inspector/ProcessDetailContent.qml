// What is known of a process: a header, and below it a section for each kind of facts.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Inspector
import Zenlot.Style

Flickable {
    id: root

    required property ProcessDetailViewModel viewModel

    Keys.onPressed: event => event.accepted = scroller.scrollForKey(event.key)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: column.implicitHeight + 28
    flickableDirection: Flickable.VerticalFlick

    T.ScrollBar.vertical: StyleScrollBar {}

    FocusScroller {
        id: scroller

        flickable: root
    }
    ColumnLayout {
        id: column

        spacing: 12
        width: root.width - 28
        x: 14
        y: 14

        ProcessDetailHeader {
            Layout.fillWidth: true
            viewModel: root.viewModel
        }
        Divider {
            Layout.fillWidth: true
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.identityExpanded
            title: qsTr("Identity")

            onToggled: root.viewModel.identityExpanded = !root.viewModel.identityExpanded

            Repeater {
                model: root.viewModel.identityRows

                DetailRow {
                    Layout.fillWidth: true
                }
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.resourceExpanded
            title: qsTr("Resources")
            visible: root.viewModel.showsResources

            onToggled: root.viewModel.resourceExpanded = !root.viewModel.resourceExpanded

            Repeater {
                model: root.viewModel.resourceRows

                DetailRow {
                    Layout.fillWidth: true
                }
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.networkExpanded
            title: root.viewModel.networkTitle
            visible: root.viewModel.showsNetwork

            onToggled: root.viewModel.networkExpanded = !root.viewModel.networkExpanded

            NetworkConnectionList {
                Layout.fillWidth: true
                connections: root.viewModel.networkConnections
                title: root.viewModel.networkTitle
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.appExpanded
            title: qsTr("Application")
            visible: root.viewModel.showsApplication

            onToggled: root.viewModel.appExpanded = !root.viewModel.appExpanded

            Repeater {
                model: root.viewModel.applicationRows

                DetailRow {
                    Layout.fillWidth: true
                }
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.commandExpanded
            title: qsTr("Command")
            visible: root.viewModel.showsCommand

            onToggled: root.viewModel.commandExpanded = !root.viewModel.commandExpanded

            SelectableText {
                id: command

                Layout.fillWidth: true
                color: Theme.secondaryLabel
                font: TextStyle.monospaced(TextStyle.caption)
                text: root.viewModel.commandText

                Keys.onPressed: event => {
                    if (event.matches(StandardKey.Copy) && command.selectedText !== "") {
                        root.viewModel.copyCommand(command.selectionStart, command.selectionEnd);
                        event.accepted = true;
                    }
                }
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.projectExpanded
            title: qsTr("Project")
            visible: root.viewModel.showsProject

            onToggled: root.viewModel.projectExpanded = !root.viewModel.projectExpanded

            Repeater {
                model: root.viewModel.projectRows

                DetailRow {
                    Layout.fillWidth: true
                }
            }
        }
        CollapsibleSection {
            Layout.fillWidth: true
            expanded: root.viewModel.originExpanded
            title: qsTr("Origin")
            visible: root.viewModel.showsOrigin

            onToggled: root.viewModel.originExpanded = !root.viewModel.originExpanded

            Repeater {
                model: root.viewModel.originRows

                DetailRow {
                    Layout.fillWidth: true
                }
            }
        }
    }
}
