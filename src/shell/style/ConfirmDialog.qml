// Asks before something that can't be undone; without a text for that there is only the way back. The window behind is blocked; Escape cancels, and so
// does Return at first, because Cancel has the keyboard until the user moves it.
//
//     ConfirmDialog {
//         destructiveText: "Force Quit Sample"
//         message: "Any unsaved work will be lost."
//         title: "Force Quit Process?"
//         onAccepted: model.confirm()
//     }
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.Dialog {
    id: root

    property string cancelText: qsTr("Cancel")
    property string destructiveText: ""
    // What had the keyboard, and gets it back before the answer is known, if it is still there.
    property Item focusBefore: null
    property bool hadFocusRing: false
    property string message: ""
    property string symbol: "exclamationmark.triangle.fill"

    anchors.centerIn: parent
    bottomPadding: 16
    closePolicy: T.Popup.CloseOnEscape
    contentHeight: column.implicitHeight
    focus: true
    horizontalPadding: 20
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 16
    modal: true
    parent: T.Overlay.overlay
    topPadding: 20
    width: 300

    T.Overlay.modal: Rectangle {
        color: Theme.scrim

        Behavior on opacity {
            NumberAnimation {
                duration: 120 * Theme.motion
            }
        }
    }
    background: PopoverBackground {
        depth: 18
        radius: 14
    }
    enter: Transition {
        NumberAnimation {
            duration: 130 * Theme.motion
            easing.type: Easing.OutCubic
            from: 0
            property: "opacity"
            to: 1
        }
        NumberAnimation {
            duration: 130 * Theme.motion
            easing.type: Easing.OutCubic
            from: 0.94
            property: "scale"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: 100 * Theme.motion
            property: "opacity"
            to: 0
        }
    }

    onAboutToHide: {
        if (root.focusBefore?.visible)
            root.focusBefore.forceActiveFocus(root.hadFocusRing ? Qt.TabFocusReason : Qt.PopupFocusReason);
    }
    onAboutToShow: {
        root.focusBefore = root.parent.Window.activeFocusItem;
        root.hadFocusRing = (root.focusBefore as T.Control)?.visualFocus ?? false;
        cancelButton.forceActiveFocus(Qt.TabFocusReason);
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        spacing: 0

        SymbolIcon {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 10
            color: Theme.vividOrange
            name: root.symbol
            size: 40
            visible: root.symbol !== ""
        }
        StyleText {
            Layout.fillWidth: true
            font: TextStyle.bold(TextStyle.body)
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 3
            text: root.title
            wrapMode: Text.Wrap
        }
        StyleText {
            Layout.bottomMargin: 16
            Layout.fillWidth: true
            Layout.topMargin: 6
            color: Theme.secondaryLabel
            font: TextStyle.callout
            horizontalAlignment: Text.AlignHCenter
            maximumLineCount: 8
            text: root.message
            wrapMode: Text.Wrap
        }
        GlassButton {
            id: destructiveButton

            KeyNavigation.down: cancelButton
            Layout.bottomMargin: 8
            Layout.fillWidth: true
            Layout.preferredHeight: 32
            text: root.destructiveText
            tint: Theme.red
            visible: text !== ""

            onClicked: root.accept()
        }
        GlassButton {
            id: cancelButton

            KeyNavigation.up: destructiveButton
            Layout.fillWidth: true
            Layout.preferredHeight: 32
            focus: true
            text: root.cancelText

            onClicked: root.reject()
        }
    }
}
