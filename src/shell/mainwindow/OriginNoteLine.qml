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
    readonly property real marksWidth: (root.isOpenToNetwork ? root.markWidth : 0) + (root.isLeftBehind ? root.markWidth : 0)
    readonly property real markWidth: 14 * TextStyle.scale
    required property string text

    implicitHeight: Math.max(note.implicitHeight, root.marksWidth > 0 ? network.size : 0)
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
        size: 10 * TextStyle.scale
        visible: root.isOpenToNetwork
        // Marks alone stand at the beginning.
        x: note.width > 0 ? note.width + 4 : 0
    }
    SymbolIcon {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        name: "exclamationmark.triangle.fill"
        size: network.size
        visible: root.isLeftBehind
        x: network.x + (root.isOpenToNetwork ? root.markWidth : 0)
    }
}
