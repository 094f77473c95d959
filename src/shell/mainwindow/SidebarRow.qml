// One row of the sidebar: a heading, a port, or an application with its ports.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

T.ItemDelegate {
    id: root

    required property string accessibleName
    required property string bundlePath
    required property bool canForceQuit
    required property string countText
    // What a tool tip has to say in full.
    readonly property string elidedText: root.kind === SidebarModel.Group ? (group.isElided ? root.title : "") : (portRow.isElided ? root.name + "\n" : "") + root.noteTip
    required property string executablePath
    required property string groupIcon
    required property bool hasFocusRing
    required property int index
    required property bool isExpanded
    required property bool isLeftBehind
    required property bool isOpenToNetwork
    required property bool isSelected
    required property int kind
    required property string name
    required property string noteDescription
    required property string noteText
    required property string noteTip
    required property int pid
    required property int port
    required property string proto
    required property string rowKey
    required property string title

    signal contextMenuRequested

    Accessible.description: root.kind !== SidebarModel.Group ? root.noteDescription : root.isExpanded ? qsTr("open") : qsTr("closed")
    Accessible.name: root.accessibleName
    Accessible.role: root.kind === SidebarModel.Heading ? Accessible.StaticText : Accessible.ListItem
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.clicked()
    bottomPadding: 4
    // A row that fades out is no row any more.
    enabled: root.kind !== SidebarModel.Heading && root.index >= 0
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    implicitHeight: content.implicitHeight + topPadding + bottomPadding
    leftPadding: root.kind === SidebarModel.PortOfGroup ? 46 : 16
    rightPadding: 16
    topPadding: root.kind === SidebarModel.Heading && root.index > 0 ? 14 : 4

    background: SidebarRowMark {
        hasFocusRing: root.hasFocusRing
        isHovered: root.hovered
        isSelected: root.isSelected
    }
    Item {
        id: content

        anchors.bottomMargin: root.bottomPadding
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        anchors.topMargin: root.topPadding
        implicitHeight: root.kind === SidebarModel.Heading ? heading.implicitHeight : root.kind === SidebarModel.Group ? group.implicitHeight : portRow.implicitHeight

        PlainText {
            id: heading

            anchors.fill: parent
            color: Theme.secondaryLabel
            font: TextStyle.bold(TextStyle.caption)
            text: root.title
            visible: root.kind === SidebarModel.Heading
        }
        // Of a type that is not known before it is loaded: few rows are groups, and nothing is made
        // of one for the others.
        Loader {
            id: group

            readonly property var content: group.item
            readonly property bool isElided: group.content?.isElided ?? false
            readonly property bool isWanted: root.kind === SidebarModel.Group

            function load() {
                if (group.isWanted)
                    group.setSource("BundleGroupRow.qml", {
                        row: root
                    });
                else
                    group.source = "";
            }

            anchors.fill: parent

            Component.onCompleted: group.load()
            onIsWantedChanged: group.load()
        }
        SidebarPortRow {
            id: portRow

            anchors.fill: parent
            executablePath: root.executablePath
            isLeftBehind: root.isLeftBehind
            isOpenToNetwork: root.isOpenToNetwork
            name: root.name
            noteText: root.noteText
            pid: root.pid
            port: root.port
            proto: root.proto
            showIcon: root.kind === SidebarModel.Port
            visible: root.port >= 0
        }
    }
    // In the button itself it would make a right click one that counts as a click, too.
    Item {
        anchors.fill: parent

        TapHandler {
            acceptedButtons: Qt.RightButton
            enabled: root.port >= 0

            onTapped: root.contextMenuRequested()
        }
    }
}
