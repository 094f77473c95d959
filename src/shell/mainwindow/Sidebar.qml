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
            Layout.minimumHeight: 44 * TextStyle.scale
            Layout.preferredHeight: 44 * TextStyle.scale
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
                keys: "Ctrl+R"
                symbol: "arrow.clockwise"
                text: qsTr("Refresh")
                toolTip: qsTr("Refresh")

                onClicked: root.viewModel.refresh()
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

            property bool isAwaitingSelection: false

            // The row of the selected port, which may be still to come: a window that was opened
            // with a port has no rows yet.
            function showSelection() {
                const row = root.viewModel.sidebar.rowOfPort(root.viewModel.sidebarSelection);
                list.isAwaitingSelection = row < 0 && root.viewModel.sidebarSelection >= 0;
                if (row >= 0)
                    list.currentIndex = row;
            }

            Accessible.name: qsTr("Listening ports")
            Accessible.role: Accessible.List
            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            cacheBuffer: 0
            clip: true
            currentIndex: -1
            highlightFollowsCurrentItem: false
            keyNavigationEnabled: false
            model: root.viewModel.sidebar

            T.ScrollBar.vertical: StyleScrollBar {}
            add: RowsAppear {}
            delegate: SidebarRow {
                id: row

                hasFocusRing: list.activeFocus && row.index === list.currentIndex
                isSelected: row.port >= 0 && row.port === root.viewModel.sidebarSelection
                width: list.width

                onContextMenuRequested: menu.popupFor(row)
                onHoveredChanged: tip.follow(row)
                onClicked: {
                    list.currentIndex = row.index;
                    root.viewModel.activateSidebarRow(row.index);
                }
            }

            displaced: RowsMove {}
            move: RowsMove {}
            remove: RowsDisappear {}

            Component.onCompleted: list.showSelection()
            Keys.onDownPressed: list.currentIndex = root.viewModel.sidebar.neighbour(list.currentIndex, 1)
            Keys.onEnterPressed: root.viewModel.activateSidebarRow(list.currentIndex)
            Keys.onLeftPressed: root.viewModel.sidebar.setExpanded(list.currentIndex, false)
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Copy)) {
                    event.accepted = true;
                    root.viewModel.copySidebarPort(list.currentIndex);
                } else if (menu.isOpenedBy(event) && (list.currentItem as SidebarRow)?.port >= 0) {
                    event.accepted = true;
                    menu.popupAt(list.currentItem);
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
            onCountChanged: {
                // Not in the midst of the change, in which a list can't be scrolled.
                if (list.isAwaitingSelection)
                    afterChange.restart();
            }
            onCurrentIndexChanged: scroll.reveal(list.currentIndex)

            Timer {
                id: afterChange

                interval: 0

                onTriggered: list.showSelection()
            }
            Connections {
                function onSidebarSelectionChanged() {
                    list.showSelection();
                }

                target: root.viewModel
            }
        }
    }

    ListScroll {
        id: scroll

        list: list
    }
    PortContextMenu {
        id: menu

        viewModel: root.viewModel

        onDetailsRequested: rowKey => root.viewModel.openPort(rowKey)
        onForceQuitRequested: rowKey => root.viewModel.requestForceQuitOfPort(rowKey)
    }
    ElidedNameTip {
        id: tip
    }
}
