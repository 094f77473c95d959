// Says whether there is a newer release. Escape closes it; Return does what the filled button does.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style
import Zenlot.Updater

Window {
    id: root

    required property UpdateViewModel viewModel

    function focusDefaultButton() {
        (actionButton.visible ? actionButton : closeButton).forceActiveFocus(Qt.OtherFocusReason);
    }

    color: Theme.window
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    // There is room for every answer, so that the window stays as it is when one comes. Some
    // languages need more.
    height: Math.max(176 * TextStyle.scale, words.implicitHeight + words.anchors.topMargin + words.anchors.bottomMargin + buttons.height + buttons.anchors.bottomMargin)
    maximumHeight: root.height
    maximumWidth: root.width
    minimumHeight: root.height
    minimumWidth: root.width
    title: qsTr("Software Update")
    width: Math.round(440 * TextStyle.scale)

    Component.onCompleted: root.focusDefaultButton()
    // What is under way ends with the window.
    onVisibleChanged: {
        if (!root.visible)
            root.viewModel.dismiss();
    }

    Connections {
        function onChanged() {
            root.focusDefaultButton();
        }
        function onPageOpened() {
            root.close();
        }

        target: root.viewModel
    }
    Shortcut {
        sequences: ["Escape", "Ctrl+W"]

        onActivated: root.close()
    }
    UpdateBadge {
        id: badge

        viewModel: root.viewModel
        x: 22
        y: 22
    }
    ColumnLayout {
        id: words

        // Read out when it changes, wherever the keyboard is.
        Accessible.name: root.viewModel.title
        Accessible.role: Accessible.AlertMessage
        anchors.bottom: buttons.top
        anchors.bottomMargin: 12
        anchors.left: badge.right
        anchors.leftMargin: 22
        anchors.right: parent.right
        anchors.rightMargin: 22
        anchors.top: parent.top
        anchors.topMargin: 24
        spacing: 6

        StyleText {
            Layout.fillWidth: true
            font: TextStyle.bold(TextStyle.title3)
            text: root.viewModel.title
            wrapMode: Text.Wrap
        }
        StyleText {
            Layout.fillWidth: true
            color: Theme.secondaryLabel
            lineHeight: 1.15
            text: root.viewModel.message
            wrapMode: Text.Wrap
        }
        Item {
            Layout.fillHeight: true
            Layout.fillWidth: true
            clip: address.height > height

            SelectableText {
                id: address

                text: root.viewModel.pageAddress
                visible: text !== ""
                width: parent.width
                wrapMode: TextEdit.WrapAnywhere
            }
        }
    }
    Row {
        id: buttons

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        anchors.right: parent.right
        anchors.rightMargin: 22
        spacing: 8

        GlassButton {
            id: closeButton

            Accessible.description: root.viewModel.title
            prominent: !actionButton.visible && root.viewModel.state !== UpdateViewModel.Checking
            text: root.viewModel.state === UpdateViewModel.Checking ? qsTr("Cancel") : root.viewModel.state === UpdateViewModel.Newer ? qsTr("Later") : root.viewModel.canTryAgain ? qsTr("Close") : qsTr("OK")
            width: Math.max(implicitWidth, 88 * TextStyle.scale)

            onClicked: root.close()
        }
        GlassButton {
            id: actionButton

            Accessible.description: root.viewModel.title
            prominent: true
            text: root.viewModel.state === UpdateViewModel.Newer ? qsTr("Release Notes") : qsTr("Try Again")
            visible: root.viewModel.state === UpdateViewModel.Newer || root.viewModel.canTryAgain
            width: Math.max(implicitWidth, 88 * TextStyle.scale)

            onClicked: root.viewModel.state === UpdateViewModel.Newer ? root.viewModel.openPage() : root.viewModel.check()
        }
    }
}
