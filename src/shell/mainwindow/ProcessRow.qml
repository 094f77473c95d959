// One process that holds the checked port.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.ProcessIcon
import Zenlot.Style

T.ItemDelegate {
    id: root

    required property string accessibleName
    required property bool canForceQuit
    required property string displayName
    // What a tool tip has to say in full.
    readonly property string elidedText: (root.isNameElided ? root.displayName + "\n" : "") + root.noteTip
    required property string executablePath
    required property int index
    required property bool isLast
    required property bool isLeftBehind
    property bool isNameElided: false
    required property bool isOpenToNetwork
    required property bool isSelected
    required property string localAddress
    required property string noteDescription
    required property string noteText
    required property string noteTip
    required property int pid
    required property string pidText
    required property int port
    required property string processState
    required property string proto
    required property string rowKey
    required property int stateTint
    required property string user

    signal contextMenuRequested

    Accessible.description: root.noteDescription
    Accessible.name: root.accessibleName
    Accessible.role: Accessible.ListItem
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.clicked()
    bottomPadding: root.isLast ? 7 : 8
    // A row that fades out is no row any more.
    enabled: root.index >= 0
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 16
    rightPadding: 16
    topPadding: 7

    background: Item {
        Rectangle {
            anchors.bottomMargin: root.isLast ? 0 : 1 // above the divider
            anchors.fill: parent
            anchors.leftMargin: 6
            anchors.rightMargin: 6
            color: Theme.hover
            radius: 7
            visible: root.hovered && !root.isSelected
        }
        SelectedRowMark {
            anchors.bottomMargin: root.isLast ? 0 : 1
            anchors.fill: parent
            anchors.leftMargin: 6
            anchors.rightMargin: 6
            opacity: root.isSelected ? 1 : 0

            Behavior on opacity {
                NumberAnimation {
                    duration: 120 * Theme.motion
                    easing.type: Easing.InOutQuad
                }
            }
        }
        Divider {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.leftMargin: 58
            anchors.right: parent.right
            visible: !root.isLast
        }
    }
    contentItem: RowLayout {
        spacing: 10

        ProcessIconView {
            cornerRadius: 6
            executablePath: root.executablePath
            pid: root.pid
            size: 28
        }
        ColumnLayout {
            spacing: 2

            ProcessTitle {
                Layout.fillWidth: true
                displayName: root.displayName
                pidText: root.pidText
                processState: root.processState
                proto: root.proto
                stateTint: root.stateTint

                onIsElidedChanged: root.isNameElided = isElided
            }
            RowLayout {
                Layout.fillWidth: true
                Layout.minimumWidth: 0
                clip: true // in the narrowest column, with large text
                spacing: 8

                PlainText {
                    color: Theme.secondaryLabel
                    font: TextStyle.monospaced(TextStyle.caption)
                    text: root.localAddress
                    visible: text !== ""
                }
                PlainText {
                    color: Theme.tertiaryLabel
                    font: TextStyle.caption
                    text: root.user
                }
                OriginNoteLine {
                    Layout.fillWidth: true
                    Layout.minimumWidth: 0
                    isLeftBehind: root.isLeftBehind
                    isOpenToNetwork: root.isOpenToNetwork
                    text: root.noteText
                }
            }
        }
    }

    // In the button itself it would make a right click one that counts as a click, too.
    Item {
        anchors.fill: parent

        TapHandler {
            acceptedButtons: Qt.RightButton

            onTapped: root.contextMenuRequested()
        }
    }
}
