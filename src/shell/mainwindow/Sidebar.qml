// Every listening port of the machine, grouped by application.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

Rectangle {
    id: root

    required property ContentViewModel viewModel

    color: Theme.sidebar

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.preferredHeight: 44
            Layout.rightMargin: 8

            StyleText {
                Layout.fillWidth: true
                font: TextStyle.headline
                text: "Zenlot"
            }
            // A disabled button would lose the keyboard to a moment of scanning.
            IconButton {
                enabled: !root.viewModel.isLoadingSidebar || activeFocus
                opacity: root.viewModel.isLoadingSidebar ? 0.4 : 1
                symbol: "arrow.clockwise"
                text: qsTr("Refresh")
                toolTip: qsTr("Refresh")

                onClicked: root.viewModel.loadOccupiedPorts()
            }
        }
        RowLayout {
            Layout.leftMargin: 16
            Layout.topMargin: 4
            spacing: 6
            visible: list.count === 0

            SmallProgressIndicator {
                running: root.viewModel.isLoadingSidebar
                visible: running
            }
            StyleText {
                color: Theme.secondaryLabel
                font: TextStyle.caption
                text: root.viewModel.isLoadingSidebar ? qsTr("Scanning…") : qsTr("No listening ports")
            }
        }
        ListView {
            id: list

            Accessible.name: qsTr("Listening ports")
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            currentIndex: -1
            highlightFollowsCurrentItem: false
            keyNavigationEnabled: false
            model: root.viewModel.sidebar

            T.ScrollBar.vertical: StyleScrollBar {}
            delegate: SidebarRow {
                id: row

                hasFocusRing: list.activeFocus && row.index === list.currentIndex
                isSelected: row.port >= 0 && row.port === root.viewModel.sidebarSelection
                width: list.width

                onContextMenuRequested: menu.popupFor(row.port, row.pid, row.executablePath)
                onClicked: {
                    list.currentIndex = row.index;
                    root.viewModel.activateSidebarRow(row.index);
                }
            }

            Keys.onDownPressed: list.currentIndex = root.viewModel.sidebar.neighbour(list.currentIndex, 1)
            Keys.onEnterPressed: root.viewModel.activateSidebarRow(list.currentIndex)
            Keys.onLeftPressed: root.viewModel.sidebar.setExpanded(list.currentIndex, false)
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Copy)) {
                    event.accepted = true;
                    root.viewModel.copySidebarPort(list.currentIndex);
                }
            }
            Keys.onReturnPressed: root.viewModel.activateSidebarRow(list.currentIndex)
            Keys.onRightPressed: root.viewModel.sidebar.setExpanded(list.currentIndex, true)
            Keys.onSpacePressed: root.viewModel.activateSidebarRow(list.currentIndex)
            Keys.onUpPressed: list.currentIndex = root.viewModel.sidebar.neighbour(list.currentIndex, -1)
            onActiveFocusChanged: {
                if (list.activeFocus && list.currentIndex < 0)
                    list.currentIndex = root.viewModel.sidebar.neighbour(-1, 1);
            }
            onCurrentIndexChanged: {
                if (list.currentIndex >= 0)
                    list.positionViewAtIndex(list.currentIndex, ListView.Contain);
            }

            Connections {
                function onSidebarSelectionChanged() {
                    const row = root.viewModel.sidebar.rowOfPort(root.viewModel.sidebarSelection);
                    if (row >= 0)
                        list.currentIndex = row;
                }

                target: root.viewModel
            }
        }
    }

    PortContextMenu {
        id: menu

        viewModel: root.viewModel
    }
}
