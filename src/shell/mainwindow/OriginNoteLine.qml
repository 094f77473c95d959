// What a row says of a server beside its name, with its quiet marks. It is the first to be cut off.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Item {
    id: root

    property alias isElided: note.truncated
    required property bool isLeftBehind
    required property bool isOpenToNetwork
    // What the marks need however little room there is.
    readonly property real marksWidth: (root.isOpenToNetwork ? 14 : 0) + (root.isLeftBehind ? 14 : 0)
    required property string text

    implicitHeight: Math.max(note.implicitHeight, root.marksWidth > 0 ? 10 : 0)
    implicitWidth: Math.ceil(note.implicitWidth) + root.marksWidth

    PlainText {
        id: note

        objectName: "originNote"
        color: Theme.tertiaryLabel
        font: TextStyle.caption
        text: root.text
        width: Math.max(0, Math.min(Math.ceil(implicitWidth), root.width - root.marksWidth))
    }
    SymbolIcon {
        id: network

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        name: "network"
        size: 10
        visible: root.isOpenToNetwork
        // Marks alone stand at the beginning.
        x: note.width > 0 ? note.width + 4 : 0
    }
    SymbolIcon {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        name: "exclamationmark.triangle.fill"
        size: 10
        visible: root.isLeftBehind
        x: network.x + (root.isOpenToNetwork ? 14 : 0)
    }
}
