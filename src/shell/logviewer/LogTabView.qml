// The log of the background monitor and of the application.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.LogViewer
import Zenlot.Style

FocusScope {
    id: root

    required property LogTabViewModel viewModel
    property bool isAtFirstLook: true

    // The first time at once, then over no more than what fits into the view.
    function scrollToEnd() {
        scrolling.stop();
        list.forceLayout();
        const start = list.contentY;
        list.positionViewAtEnd();
        if (list.contentHeight + list.topMargin > list.height)
            list.contentY += list.bottomMargin; // which the view leaves out
        if (!root.isAtFirstLook) {
            scrolling.to = list.contentY;
            scrolling.from = Math.max(start, list.contentY - list.height);
            scrolling.start();
        }
        root.isAtFirstLook = false;
    }

    onVisibleChanged: root.visible ? root.viewModel.appear() : root.viewModel.disappear()
    Component.onCompleted: {
        if (root.visible)
            root.viewModel.appear();
    }
    Component.onDestruction: root.viewModel.disappear()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.bottomMargin: 7
            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.rightMargin: 10
            Layout.topMargin: 7
            spacing: 8

            GlassButton {
                enabled: root.viewModel.hasLines
                symbol: "trash"
                text: qsTr("Clear")
                toolTip: qsTr("Clear log")

                onClicked: root.viewModel.clearLog()
            }
            GlassButton {
                enabled: root.viewModel.hasMarks
                symbol: "bookmark.slash"
                text: qsTr("Unmark")
                toolTip: qsTr("Clear marked rows")

                onClicked: root.viewModel.unmarkAll()
            }
            LogPath {
                Layout.fillWidth: true
                path: root.viewModel.path

                onCopyRequested: root.viewModel.copyPath()
            }
        }
        Divider {
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
            Layout.fillWidth: true

            ColumnLayout {
                anchors.centerIn: parent
                spacing: 8
                visible: !root.viewModel.hasLines

                SymbolIcon {
                    Layout.alignment: Qt.AlignHCenter
                    color: Theme.quaternaryLabel
                    name: "doc.text"
                    size: TextStyle.largeTitle.pixelSize + 4
                }
                StyleText {
                    color: Theme.secondaryLabel
                    font: TextStyle.callout
                    text: qsTr("No log entries yet")
                }
            }
            ListView {
                id: list

                Accessible.name: qsTr("Log")
                Accessible.role: Accessible.List
                activeFocusOnTab: true
                anchors.fill: parent
                bottomMargin: 10
                boundsBehavior: Flickable.StopAtBounds
                clip: true
                focus: true
                highlightFollowsCurrentItem: false
                leftMargin: 10
                model: root.viewModel.lines
                objectName: "logLines"
                rightMargin: 10
                spacing: 1
                topMargin: 10
                visible: root.viewModel.hasLines

                T.ScrollBar.vertical: StyleScrollBar {}
                delegate: LogLineRow {
                    id: row

                    isCurrent: row.index === list.currentIndex && list.activeFocus
                    width: list.width - list.leftMargin - list.rightMargin

                    onContextMenuRequested: menu.popupFor(row.index, row.isMarked)
                    onToggleMark: root.viewModel.toggleMark(row.index)
                }
                Keys.onMenuPressed: {
                    if (list.currentItem)
                        menu.popupFor(list.currentIndex, (list.currentItem as LogLineRow).isMarked);
                }
                Keys.onPressed: event => {
                    if (event.matches(StandardKey.Copy)) {
                        event.accepted = true;
                        root.viewModel.copyLine(list.currentIndex);
                    }
                }
                onCurrentIndexChanged: list.positionViewAtIndex(list.currentIndex, ListView.Contain)
            }
        }
    }
    StyleMenu {
        id: menu

        property bool isMarked: false
        property int row: -1

        function popupFor(row: int, isMarked: bool) {
            menu.row = row;
            menu.isMarked = isMarked;
            menu.popup();
        }

        StyleMenuItem {
            text: menu.isMarked ? qsTr("Unmark Row") : qsTr("Mark Row")

            onTriggered: root.viewModel.toggleMark(menu.row)
        }
    }
    Connections {
        function onLineCountChanged() {
            if (list.count === 0)
                root.isAtFirstLook = true;
            else
                root.scrollToEnd();
        }

        target: root.viewModel
    }
    NumberAnimation {
        id: scrolling

        duration: 250
        easing.type: Easing.InOutQuad
        property: "contentY"
        target: list
    }
}
