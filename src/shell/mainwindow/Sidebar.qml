// Every listening port of the machine.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Zenlot.MainWindow

Pane {
    id: root

    required property ContentViewModel viewModel

    padding: 0

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.leftMargin: 12
            Layout.rightMargin: 6
            Layout.topMargin: 6

            Label {
                Layout.fillWidth: true
                font.bold: true
                text: "Zenlot"
            }
            ToolButton {
                Accessible.name: qsTr("Refresh")
                enabled: !root.viewModel.isLoadingSidebar
                text: "⟳"

                onClicked: root.viewModel.loadOccupiedPorts()
            }
        }
        Label {
            Layout.leftMargin: 12
            font.pixelSize: 10
            opacity: 0.75
            text: root.viewModel.isLoadingSidebar ? qsTr("Scanning…") : qsTr("No listening ports")
            visible: list.count === 0
        }
        ListView {
            id: list

            Accessible.name: qsTr("Listening ports")
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            clip: true
            model: root.viewModel.sidebar

            ScrollBar.vertical: ScrollBar {}
            delegate: SidebarPortRow {
                id: row

                isSelected: row.port === root.viewModel.sidebarSelection
                width: ListView.view.width

                onClicked: root.viewModel.sidebarSelection = row.port
            }
        }
    }
}
