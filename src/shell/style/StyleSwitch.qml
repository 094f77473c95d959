// A switch at the end of its words: a title and, below it, a caption that may be empty.
//
// What is switched says whether it is on; a press only asks: bind `isOn` and answer `requested`.
// A check box by type, since screen readers are told the role of the type, whatever is written here.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.CheckBox {
    id: root

    property string caption: ""
    required property bool isOn

    signal requested(isOn: bool)

    Accessible.checkable: true
    Accessible.checked: root.isOn
    Accessible.description: root.caption
    Accessible.name: root.text
    Accessible.role: Accessible.CheckBox
    Accessible.onPressAction: root.requested(!root.isOn)
    Accessible.onToggleAction: root.requested(!root.isOn)
    checked: root.isOn
    font: TextStyle.body
    implicitHeight: Math.max(38, implicitContentHeight + topPadding + bottomPadding)
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    horizontalPadding: 12
    nextCheckState: () => root.checkState
    opacity: root.enabled ? 1 : 0.4
    verticalPadding: 9

    contentItem: RowLayout {
        spacing: 16

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            PlainText {
                Layout.fillWidth: true
                font: root.font
                text: root.text
                wrapMode: Text.Wrap
            }
            PlainText {
                Layout.fillWidth: true
                color: Theme.secondaryLabel
                font: TextStyle.caption
                text: root.caption
                visible: root.caption !== ""
                wrapMode: Text.Wrap
            }
        }
        Rectangle {
            border.color: root.isOn ? "transparent" : Theme.tertiaryLabel
            color: root.isOn ? Theme.accent : Theme.quaternaryFill
            implicitHeight: 20
            implicitWidth: 34
            radius: 10

            Behavior on color {
                ColorAnimation {
                    duration: 120 * Theme.motion
                }
            }

            Rectangle {
                border.color: Qt.rgba(0, 0, 0, 0.18)
                color: "white"
                height: 16
                radius: 8
                width: 16
                x: root.isOn ? parent.width - width - 2 : 2
                y: 2

                Behavior on x {
                    NumberAnimation {
                        duration: 140 * Theme.motion
                        easing.type: Easing.InOutQuad
                    }
                }
            }
            // At some distance: when it is on it has the colour of the ring.
            FocusRing {
                anchors.margins: -4
                radius: 14
                visible: root.visualFocus
            }
        }
    }

    Keys.onEnterPressed: root.requested(!root.isOn)
    Keys.onReturnPressed: root.requested(!root.isOn)
    onClicked: root.requested(!root.isOn)
}
