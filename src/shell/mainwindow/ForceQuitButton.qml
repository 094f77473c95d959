// Ends the highlighted process, or tells why that can't be done and what would help: a tool tip says
// it when the pointer comes, which a disabled button does not notice, or when somebody tries by key.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

Item {
    id: root

    required property ContentViewModel viewModel
    property alias room: button.room

    implicitHeight: button.implicitHeight
    implicitWidth: button.implicitWidth

    Connections {
        function onForceQuitRefused() {
            telling.restart();
        }

        function onSelectionChanged() {
            telling.stop();
        }

        target: root.viewModel
    }
    Timer {
        id: telling

        interval: 8000
    }
    HoverHandler {
        id: pointer
    }
    GlassButton {
        id: button

        Accessible.description: root.viewModel.forceQuitHint
        anchors.fill: parent
        enabled: root.viewModel.canForceQuit
        keys: "Del"
        symbol: "xmark.octagon.fill"
        text: qsTr("Force Quit")
        toolTip: qsTr("Force-quit selected process")

        onClicked: root.viewModel.requestForceQuit()
    }
    StyleToolTip {
        delay: telling.running ? 0 : 700
        isShown: text !== "" && (pointer.hovered || telling.running)
        text: root.viewModel.forceQuitHint
    }
}
