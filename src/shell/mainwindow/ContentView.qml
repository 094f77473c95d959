// The content of the main window: every listening port on the left, one port's check on the right.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Zenlot.MainWindow

SplitView {
    id: root

    required property ContentViewModel viewModel

    orientation: Qt.Horizontal

    Component.onCompleted: {
        root.viewModel.appear();
        portField.forceActiveFocus();
    }

    Sidebar {
        SplitView.minimumWidth: 160
        SplitView.preferredWidth: 200
        SplitView.maximumWidth: 240
        viewModel: root.viewModel
    }

    ColumnLayout {
        SplitView.fillWidth: true
        spacing: 0

        TextField {
            id: portField

            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 14
            Layout.maximumWidth: 320
            Layout.fillWidth: true
            Accessible.name: qsTr("Port")
            background: null
            font.pixelSize: 52
            font.weight: Font.Thin
            horizontalAlignment: TextInput.AlignHCenter
            inputMethodHints: Qt.ImhDigitsOnly

            onAccepted: root.viewModel.performCheck()
            onTextEdited: root.viewModel.portInput = text

            // The field's own placeholder hides while a centred field has the focus.
            Label {
                anchors.centerIn: parent
                font: portField.font
                opacity: 0.25
                text: "8080"
                visible: portField.text === ""
            }

            Connections {
                function onPortInputChanged() {
                    if (portField.text !== root.viewModel.portInput)
                        portField.text = root.viewModel.portInput;
                }

                target: root.viewModel
            }
        }

        Item {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 14
            Layout.preferredHeight: 20
            Layout.topMargin: 10
            implicitWidth: statusLine.implicitWidth

            BusyIndicator {
                anchors.centerIn: parent
                height: 20
                running: root.viewModel.isChecking
                width: 20
            }
            Label {
                id: statusLine

                anchors.centerIn: parent
                opacity: root.viewModel.isFree ? 0.85 : 0.6
                text: root.viewModel.statusText
            }
        }

        Rectangle {
            Layout.fillWidth: true
            color: root.palette.mid
            implicitHeight: 1
            visible: results.count > 0
        }
        Label {
            Layout.bottomMargin: 4
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            Layout.topMargin: 10
            font.pixelSize: 10
            opacity: 0.7
            text: root.viewModel.resultsHeader
            visible: results.count > 0
        }
        ListView {
            id: results

            Accessible.name: root.viewModel.resultsHeader
            Accessible.role: Accessible.List
            Layout.fillWidth: true
            Layout.maximumHeight: 300
            Layout.preferredHeight: contentHeight
            clip: true
            currentIndex: 0
            keyNavigationEnabled: true
            model: root.viewModel.processes
            visible: count > 0

            ScrollBar.vertical: ScrollBar {}
            delegate: ProcessRow {
                isSelected: ListView.isCurrentItem
                width: ListView.view.width
            }

            Connections {
                function onResultsFocusRequested() {
                    results.currentIndex = 0;
                    results.forceActiveFocus();
                }

                target: root.viewModel
            }
        }

        Item {
            Layout.fillHeight: true
        }
    }
}
