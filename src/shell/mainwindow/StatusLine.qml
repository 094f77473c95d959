// What is known of the typed port, in one line.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

Item {
    id: root

    required property ContentViewModel viewModel

    implicitHeight: 20 * TextStyle.scale
    implicitWidth: Math.max(free.implicitWidth, prompt.implicitWidth, progress.implicitWidth)

    SmallProgressIndicator {
        id: progress

        anchors.centerIn: parent
        running: root.viewModel.isChecking
        visible: running
    }
    Row {
        id: free

        anchors.centerIn: parent
        opacity: root.viewModel.isFree ? 1 : 0
        scale: root.viewModel.isFree ? 1 : 0.95
        spacing: 5
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: 150 * Theme.motion
                easing.type: Easing.InOutQuad
            }
        }
        Behavior on scale {
            NumberAnimation {
                duration: 150 * Theme.motion
                easing.type: Easing.InOutQuad
            }
        }

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.green
            name: "checkmark.circle.fill"
            size: 13 * TextStyle.scale
        }
        StyleText {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondaryLabel
            font: TextStyle.callout
            text: root.viewModel.freeText
        }
    }
    StyleText {
        id: prompt

        anchors.centerIn: parent
        color: Theme.tertiaryLabel
        font: TextStyle.callout
        text: root.viewModel.statusText
        visible: text !== "" && !root.viewModel.isFree
    }
}
