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
    function takeKeyboard() {
        list.forceActiveFocus();
    }

    // Rows that fade out are gone for the keyboard.
    enabled: root.viewModel.hasResults
    opacity: root.viewModel.hasResults ? 1 : 0
    spacing: 0
    visible: root.viewModel.hasResults || opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: 200 * Theme.motion
            easing.type: Easing.InOutQuad
        }
    }

    ListScroll {
        id: scroll

        list: list
    }
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

        // That of the last rows while they fade out.
        property real shownHeight: 0

        function keepHeight() {
            if (list.count > 0)
                list.shownHeight = list.contentHeight;
        }

        Accessible.name: root.viewModel.resultsHeader
        Accessible.role: Accessible.List
        Layout.fillWidth: true
        Layout.maximumHeight: 300
        Layout.preferredHeight: list.shownHeight
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        currentIndex: root.viewModel.selectedRow
        highlightFollowsCurrentItem: false
        keyNavigationEnabled: false
        model: root.viewModel.processes

        T.ScrollBar.vertical: StyleScrollBar {}
        add: RowsAppear {}
        delegate: ProcessRow {
            id: row

            isLast: row.index === list.count - 1
            isSelected: row.index === root.viewModel.selectedRow
            width: list.width

            onContextMenuRequested: menu.popupFor(row)
            onHoveredChanged: tip.follow(row)
            onClicked: {
                root.viewModel.openRow(row.index);
                list.forceActiveFocus();
            }
        }

        displaced: RowsMove {}
        move: RowsMove {}
        remove: RowsDisappear {}

        Keys.onDeletePressed: event => event.modifiers & Qt.ShiftModifier ? root.viewModel.requestStop() : root.viewModel.requestForceQuit()
        Keys.onDownPressed: root.viewModel.moveSelection(1)
        Keys.onEnterPressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy)) {
                event.accepted = true;
                root.viewModel.copySelectedPid();
            } else if (menu.isOpenedBy(event) && list.currentItem) {
                event.accepted = true;
                menu.popupAt(list.currentItem);
            }
        }
        Keys.onReturnPressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onSpacePressed: root.viewModel.openRow(root.viewModel.selectedRow)
        Keys.onUpPressed: root.viewModel.moveSelection(-1)
        onContentHeightChanged: list.keepHeight()
        onCountChanged: list.keepHeight()
        onCurrentIndexChanged: scroll.reveal(list.currentIndex)
    }
    PortContextMenu {
        id: menu

        copiesPid: true
        viewModel: root.viewModel

        onDetailsRequested: rowKey => root.viewModel.openProcess(rowKey)
        onForceQuitRequested: rowKey => root.viewModel.requestForceQuitOf(rowKey)
    }
    ElidedNameTip {
        id: tip
    }
}
