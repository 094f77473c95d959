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

    // Whether there is a button for the application's menu.
    property bool hasMenuButton: false
    required property ContentViewModel viewModel
    // Shows the process whose details are asked for; seen only while they are.
    property alias inspector: inspectorContent.data
    // As the texts, where there is room: three columns fit into the narrowest window.
    readonly property real columnScale: Math.max(1, Math.min(TextStyle.scale, root.width / 580))

    // The menu is to open below the item.
    signal menuRequested(item: Item)

    function requestMenu() {
        root.menuRequested(menuButton);
    }

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

        T.SplitView.maximumWidth: Math.max(160 * root.columnScale, Math.min(240 * root.columnScale, root.width - detail.T.SplitView.minimumWidth - 2 - (inspectorColumn.visible ? inspectorColumn.T.SplitView.minimumWidth : 0)))
        T.SplitView.minimumWidth: 160 * root.columnScale
        T.SplitView.preferredWidth: 200 * root.columnScale
        viewModel: root.viewModel
    }

    ColumnLayout {
        id: detail

        T.SplitView.fillWidth: true
        T.SplitView.minimumWidth: 178 * root.columnScale
        spacing: 0

        Item {
            id: toolbar

            // While the inspector is closed the buttons of the corner stand here.
            readonly property real roomOfCorner: inspectorColumn.visible ? 0 : root.width - (root.hasMenuButton ? menuButton : inspectorButton).x - 10 + commands.spacing

            Layout.fillWidth: true
            implicitHeight: 44 * TextStyle.scale

            // No RowLayout: those of this Qt sometimes leave what appears where it was made.
            Row {
                id: commands

                anchors.verticalCenter: parent.verticalCenter
                spacing: 8
                visible: root.viewModel.hasSelection
                x: 10

                ForceQuitButton {
                    room: detail.width - 20 - toolbar.roomOfCorner - stopButton.width - commands.spacing
                    viewModel: root.viewModel
                }
                GlassButton {
                    id: stopButton

                    Accessible.description: toolTip
                    enabled: root.viewModel.canStop
                    keys: "Shift+Del"
                    text: qsTr("Stop")
                    toolTip: qsTr("Stop the server so that it stays stopped")

                    onClicked: root.viewModel.requestStop()
                }
            }
            // In the corner of the window rather than of a column, so that they stay under the pointer when
            // the inspector opens and closes.
            IconButton {
                id: menuButton

                keys: "F10"
                parent: root
                symbol: "line.3.horizontal"
                text: qsTr("Menu")
                visible: root.hasMenuButton
                x: inspectorButton.x - width - 4
                y: 8
                z: 1

                onClicked: root.requestMenu()
            }
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

        Notice {
            Layout.fillWidth: true
            Layout.leftMargin: 14
            Layout.rightMargin: 14
            text: root.viewModel.settingsNotice

            onDismissed: root.viewModel.dismissSettingsNotice()
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
                Layout.maximumWidth: 320 * TextStyle.scale
                room: Math.min(detail.width, 320 * TextStyle.scale)
                viewModel: root.viewModel
            }
            StatusLine {
                Layout.alignment: Qt.AlignHCenter
                viewModel: root.viewModel
            }
            StyleText {
                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: true
                Layout.leftMargin: 14
                Layout.maximumWidth: portField.Layout.maximumWidth
                Layout.rightMargin: 14
                color: Theme.secondaryLabel
                font: TextStyle.caption
                horizontalAlignment: Text.AlignHCenter
                text: root.viewModel.freeNote
                visible: root.viewModel.isFree && text !== ""
                wrapMode: Text.Wrap
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

        T.SplitView.maximumWidth: Math.max(240 * root.columnScale, Math.min(400 * root.columnScale, root.width - sidebar.width - detail.T.SplitView.minimumWidth - 2))
        T.SplitView.minimumWidth: 240 * root.columnScale
        T.SplitView.preferredWidth: 290 * root.columnScale
        color: Theme.sidebar
        visible: root.viewModel.isInspectorOpen

        PlainText {
            anchors.left: parent.left
            anchors.leftMargin: 14
            font: TextStyle.headline
            height: 44 * TextStyle.scale
            text: qsTr("Inspector")
            verticalAlignment: Text.AlignVCenter
        }
        Item {
            id: inspectorContent

            anchors.fill: parent
            anchors.topMargin: 44 * TextStyle.scale
        }
    }

    // Made when something is asked for the first time. What is not to be seen gets no column.
    Loader {
        id: forceQuitDialog

        readonly property bool isWanted: root.viewModel.isConfirming

        visible: false

        onIsWantedChanged: {
            if (!forceQuitDialog.item)
                forceQuitDialog.setSource("ForceQuitDialog.qml", {
                    viewModel: root.viewModel
                });
        }
    }
    Loader {
        id: stopDialog

        readonly property bool isWanted: root.viewModel.isAskingToStop

        visible: false

        onIsWantedChanged: {
            if (!stopDialog.item)
                stopDialog.setSource("StopDialog.qml", {
                    viewModel: root.viewModel
                });
        }
    }
}
