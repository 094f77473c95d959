// The content of the main window: every listening port on the left, one port's check in the
// middle, and the details of a process on the right while they are asked for.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

T.SplitView {
    id: root

    required property ContentViewModel viewModel
    // Shows the process whose details are asked for; seen only while they are.
    property alias inspector: inspectorContent.data

    orientation: Qt.Horizontal

    handle: Rectangle {
        id: handle

        readonly property bool isActive: T.SplitHandle.hovered || T.SplitHandle.pressed

        color: isActive ? Theme.tertiaryLabel : Theme.separator
        implicitWidth: 1

        // A line is hard to catch: it takes the pointer some way to both sides.
        containmentMask: Item {
            height: handle.height
            width: 9
            x: -4
        }
    }

    Component.onCompleted: {
        root.viewModel.appear();
        portField.forceActiveFocus();
    }
    Keys.onEscapePressed: portField.clearAndFocus()
    // Whoever has the keyboard: nothing else in the window has a use for these.
    Keys.onPressed: event => event.accepted = portField.take(event)

    Connections {
        function onPortFieldFocusRequested() {
            if (!keeper.isWithPopup())
                portField.selectAndFocus();
        }

        function onResultsFocusRequested() {
            if (!keeper.isWithPopup())
                results.takeKeyboard();
        }

        target: root.viewModel
    }
    KeyboardKeeper {
        id: keeper

        area: root
        home: portField

        // The next digit begins a new number.
        onBroughtHome: portField.selectAll()
    }
    Shortcut {
        sequences: ["Ctrl+R", "F5"]

        onActivated: root.viewModel.refresh()
    }
    Shortcut {
        sequences: ["Ctrl+F", "Ctrl+L"]

        onActivated: portField.selectAndFocus()
    }
    Shortcut {
        enabled: root.viewModel.canToggleInspector
        sequence: "Ctrl+I"

        onActivated: root.viewModel.toggleInspector()
    }
    // A split view takes from its filling column only: in a narrow window the others have to step
    // back by themselves.
    Sidebar {
        id: sidebar

        T.SplitView.maximumWidth: Math.max(160, Math.min(240, root.width - detail.T.SplitView.minimumWidth - 2 - (inspectorColumn.visible ? inspectorColumn.T.SplitView.minimumWidth : 0)))
        T.SplitView.minimumWidth: 160
        T.SplitView.preferredWidth: 200
        viewModel: root.viewModel
    }

    ColumnLayout {
        id: detail

        T.SplitView.fillWidth: true
        T.SplitView.minimumWidth: 178
        spacing: 0

        RowLayout {
            id: toolbar

            // While the inspector is closed its button stands here.
            readonly property real roomOfToggle: inspectorColumn.visible ? 0 : inspectorButton.width + toolbar.spacing

            Layout.fillWidth: true
            Layout.leftMargin: 10
            Layout.preferredHeight: 44
            Layout.rightMargin: 10 + toolbar.roomOfToggle
            spacing: 8

            ForceQuitButton {
                room: detail.width - 20 - toolbar.roomOfToggle - stopButton.width - toolbar.spacing
                viewModel: root.viewModel
                visible: root.viewModel.hasSelection
            }
            GlassButton {
                id: stopButton

                Accessible.description: toolTip
                enabled: root.viewModel.canStop
                keys: "Shift+Del"
                text: qsTr("Stop")
                toolTip: qsTr("Stop the server so that it stays stopped")
                visible: root.viewModel.hasSelection

                onClicked: root.viewModel.requestStop()
            }
            Item {
                Layout.fillWidth: true
            }
            // In the corner of the window rather than of a column, so that it stays under the pointer when
            // the inspector opens and closes.
            IconButton {
                id: inspectorButton

                checked: root.viewModel.isInspectorOpen
                enabled: root.viewModel.canToggleInspector
                keys: "Ctrl+I"
                parent: root
                showsState: true
                symbol: "sidebar.right"
                text: qsTr("Toggle Inspector")
                toolTip: qsTr("Toggle Inspector")
                x: root.width - width - 10
                y: 8
                z: 1

                onClicked: root.viewModel.toggleInspector()
            }
        }

        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 14
            Layout.fillWidth: true
            Layout.topMargin: 14
            spacing: 10

            PortField {
                id: portField

                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: true
                Layout.maximumWidth: 320
                viewModel: root.viewModel
            }
            StatusLine {
                Layout.alignment: Qt.AlignHCenter
                viewModel: root.viewModel
            }
        }

        PortResults {
            id: results

            Layout.fillWidth: true
            viewModel: root.viewModel
        }

        Item {
            Layout.fillHeight: true
        }
    }

    Rectangle {
        id: inspectorColumn

        T.SplitView.maximumWidth: Math.max(240, Math.min(400, root.width - sidebar.width - detail.T.SplitView.minimumWidth - 2))
        T.SplitView.minimumWidth: 240
        T.SplitView.preferredWidth: 290
        color: Theme.sidebar
        visible: root.viewModel.isInspectorOpen

        StyleText {
            Accessible.ignored: true
            anchors.left: parent.left
            anchors.leftMargin: 14
            font: TextStyle.headline
            height: 44
            text: qsTr("Inspector")
            verticalAlignment: Text.AlignVCenter
        }
        Item {
            id: inspectorContent

            anchors.fill: parent
            anchors.topMargin: 44
        }
    }

    ConfirmDialog {
        cancelText: qsTr("Cancel")
        destructiveText: root.viewModel.confirmationButton
        message: root.viewModel.confirmationMessage
        title: qsTr("Force Quit Process?")
        visible: root.viewModel.isConfirming

        onAccepted: root.viewModel.confirmForceQuit()
        onRejected: root.viewModel.cancelForceQuit()
    }
    ConfirmDialog {
        cancelText: root.viewModel.stopButton === "" ? qsTr("Close") : qsTr("Cancel")
        destructiveText: root.viewModel.stopButton
        message: root.viewModel.stopMessage
        title: qsTr("Stop the Server?")
        visible: root.viewModel.isAskingToStop

        onAccepted: root.viewModel.confirmStop()
        onRejected: root.viewModel.cancelStop()
    }
}
