// The processes that hold the typed port.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

ColumnLayout {
    id: root

    required property ContentViewModel viewModel
    readonly property bool hasRows: list.count > 0

    function takeKeyboard() {
        list.forceActiveFocus();
    }

    spacing: 0

    Divider {
        Layout.fillWidth: true
    }
    StyleText {
        Layout.bottomMargin: 4
        Layout.fillWidth: true
        Layout.leftMargin: 20
        Layout.rightMargin: 20
        Layout.topMargin: 10
        color: Theme.secondaryLabel
        font: TextStyle.caption
        text: root.viewModel.resultsHeader
        wrapMode: Text.Wrap
    }
    ListView {
        id: list

        Accessible.name: root.viewModel.resultsHeader
        Accessible.role: Accessible.List
        Layout.fillWidth: true
        Layout.maximumHeight: 300
        Layout.preferredHeight: contentHeight
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        currentIndex: root.viewModel.selectedRow
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: root.viewModel.processes

        T.ScrollBar.vertical: StyleScrollBar {}
        add: Transition {
            NumberAnimation {
                duration: 150
                from: 0
                property: "opacity"
                to: 1
            }
        }
        delegate: ProcessRow {
            id: row

            isLast: row.index === list.count - 1
            isSelected: row.index === root.viewModel.selectedRow
            width: list.width

            onContextMenuRequested: menu.popupFor(parseInt(root.viewModel.portInput), row.pid, row.executablePath)
            onClicked: {
                root.viewModel.openRow(row.index);
                list.forceActiveFocus();
            }
        }

        Keys.onDeletePressed: root.viewModel.requestForceQuit()
        Keys.onDownPressed: root.viewModel.moveSelection(1)
        Keys.onEnterPressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy)) {
                event.accepted = true;
                root.viewModel.copySelectedPid();
            }
        }
        Keys.onReturnPressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onSpacePressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onUpPressed: root.viewModel.moveSelection(-1)
        onCurrentIndexChanged: {
            if (list.currentIndex >= 0)
                list.positionViewAtIndex(list.currentIndex, ListView.Contain);
        }
    }
    PortContextMenu {
        id: menu

        viewModel: root.viewModel
    }
}
