// The log of the background monitor and of the application.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.LogViewer
import Zenlot.Style

FocusScope {
    id: root

    required property LogTabViewModel viewModel

    function appear() {
        root.viewModel.appear();
        lines.scrollToEnd();
    }

    onVisibleChanged: root.visible ? root.appear() : root.viewModel.disappear()
    Component.onCompleted: {
        if (root.visible)
            root.appear();
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
                visible: !root.viewModel.hasLines && !root.viewModel.isReading

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
            // Only where the disk is slow.
            SmallProgressIndicator {
                id: progress

                anchors.centerIn: parent
                running: progress.visible
                visible: !root.viewModel.hasLines && root.viewModel.isReading

                AppearsLate on opacity {
                    running: progress.visible
                }
            }
            LogLines {
                id: lines

                anchors.fill: parent
                focus: true
                viewModel: root.viewModel
                visible: root.viewModel.hasLines
            }
        }
    }
}
