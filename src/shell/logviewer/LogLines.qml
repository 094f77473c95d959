// The lines of the log. The view follows the end of the log.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.LogViewer
import Zenlot.Style

ListView {
    id: root

    property bool isKeyboardUsed: true
    required property LogTabViewModel viewModel

    // What is drawn is placed with numbers of single precision. Where the list is many millions of
    // pixels long they have no whole pixels any more, and rows would shift against each other.
    function drawingOffsetAt(y: real): real {
        const position = root.contentY;
        return Math.abs(position) < 4000000 ? 0 : y - Math.fround(y) - position + Math.fround(position);
    }

    // With the margins, which the view's own functions leave out.
    function positionAtStart() {
        root.positionViewAtBeginning();
        root.contentY = root.originY - root.topMargin;
    }

    function positionAtEnd() {
        root.positionViewAtEnd();
        if (root.contentHeight + root.topMargin > root.height)
            root.contentY += root.bottomMargin;
    }

    // When the view appears at once, later over no more than what fits into it.
    function scrollToEnd() {
        scrolling.stop();
        if (root.count === 0)
            return;
        root.forceLayout();
        const start = root.contentY;
        root.positionAtEnd();
        if (!root.viewModel.isReading) {
            scrolling.to = root.contentY;
            scrolling.from = Math.max(start, root.contentY - root.height);
            scrolling.start();
        }
    }

    // Below the top of the view; none between two rows and beyond the last.
    function rowAt(y: real): int {
        return Math.max(root.indexAt(0, root.contentY + y), root.indexAt(0, root.contentY + y - 1));
    }

    function isInView(row: Item): bool {
        return row !== null && row.y < root.contentY + root.height && row.y + row.height > root.contentY;
    }

    // The keyboard goes on where people are looking.
    function takeRowInView() {
        if (!root.isInView(root.currentItem))
            root.currentIndex = root.rowAt(root.height - root.bottomMargin - 1);
    }

    function goTo(row: int) {
        scrolling.stop();
        root.isKeyboardUsed = true;
        root.currentIndex = Math.max(0, Math.min(row, root.count - 1));
        if (root.currentIndex === 0)
            root.positionAtStart();
        else if (root.currentIndex === root.count - 1)
            root.positionAtEnd();
        else
            root.positionViewAtIndex(root.currentIndex, ListView.Contain);
    }

    function goBy(rows: int) {
        if (root.isInView(root.currentItem))
            root.goTo(root.currentIndex + rows);
        else
            root.takeRowInView();
    }

    function goByPage(isDown: bool) {
        root.takeRowInView();
        root.positionViewAtIndex(root.currentIndex, isDown ? ListView.Beginning : ListView.End);
        const row = root.rowAt(isDown ? root.height : 1);
        if (isDown)
            root.goTo(row < 0 ? root.count - 1 : Math.max(row, root.currentIndex + 1));
        else
            root.goTo(row < 0 ? 0 : Math.min(row, root.currentIndex - 1));
    }

    Accessible.name: qsTr("Log")
    Accessible.role: Accessible.List
    activeFocusOnTab: true
    bottomMargin: 10
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    highlightFollowsCurrentItem: false
    keyNavigationEnabled: false
    leftMargin: 10
    model: root.viewModel.lines
    objectName: "logLines"
    reuseItems: true
    rightMargin: 10
    spacing: 1
    topMargin: 10

    T.ScrollBar.vertical: StyleScrollBar {}
    delegate: LogLineRow {
        id: row

        drawingOffset: root.drawingOffsetAt(row.y)
        width: root.width - root.leftMargin - root.rightMargin

        onActiveFocusChanged: {
            if (row.visualFocus) {
                root.isKeyboardUsed = true;
                root.takeRowInView();
            }
        }
        onContextMenuRequested: {
            menu.take(row);
            menu.popup();
        }
        onCopyRequested: root.viewModel.copyLine(row.index)
        onToggleMark: {
            root.currentIndex = row.index;
            root.forceActiveFocus();
            root.viewModel.toggleMark(row.index);
        }
    }

    Keys.onDownPressed: root.goBy(1)
    Keys.onEnterPressed: root.viewModel.toggleMark(root.currentIndex)
    Keys.onMenuPressed: {
        if (root.currentItem) {
            menu.take(root.currentItem as LogLineRow);
            menu.popup(root.currentItem, 20, root.currentItem.height);
        }
    }
    Keys.onPressed: event => {
        event.accepted = true;
        if (event.matches(StandardKey.Copy))
            root.viewModel.copyLine(root.currentIndex);
        else if (event.key === Qt.Key_Home)
            root.goTo(0);
        else if (event.key === Qt.Key_End)
            root.goTo(root.count - 1);
        else if (event.key === Qt.Key_PageDown)
            root.goByPage(true);
        else if (event.key === Qt.Key_PageUp)
            root.goByPage(false);
        else
            event.accepted = false;
    }
    Keys.onReturnPressed: root.viewModel.toggleMark(root.currentIndex)
    Keys.onUpPressed: root.goBy(-1)
    Keys.onSpacePressed: root.viewModel.toggleMark(root.currentIndex)

    FocusRing {
        anchors.fill: undefined
        height: root.currentItem ? root.currentItem.height : 0
        parent: root.contentItem
        radius: 4
        visible: root.activeFocus && root.isKeyboardUsed && root.currentItem !== null
        width: root.currentItem ? root.currentItem.width : 0
        y: root.currentItem ? root.currentItem.y + root.drawingOffsetAt(root.currentItem.y) : 0
    }
    PointHandler {
        acceptedButtons: Qt.LeftButton | Qt.RightButton

        onActiveChanged: {
            if (active)
                root.isKeyboardUsed = false;
        }
    }
    Connections {
        function onHasLinesChanged() {
            root.currentIndex = root.count - 1; // where people are looking
        }
        function onLineCountChanged() {
            root.scrollToEnd();
        }

        target: root.viewModel
    }
    NumberAnimation {
        id: scrolling

        duration: 250 * Theme.motion
        easing.type: Easing.InOutQuad
        property: "contentY"
        target: root
    }
    StyleMenu {
        id: menu

        property bool isMarked: false
        property int index: -1

        // The row itself may show another line before the menu is closed.
        function take(row: LogLineRow) {
            menu.index = row.index;
            menu.isMarked = row.isMarked;
        }

        onClosed: root.forceActiveFocus()

        StyleMenuItem {
            text: menu.isMarked ? qsTr("Unmark Row") : qsTr("Mark Row")

            onTriggered: root.viewModel.toggleMark(menu.index)
        }
    }
}
