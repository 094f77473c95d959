// What a row says of a server beside its name, with its quiet marks. It is the first to be cut off.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

RowLayout {
    id: root

    property alias isElided: note.truncated
    required property bool isLeftBehind
    required property bool isOpenToNetwork
    // What the marks need however little room there is.
    readonly property real marksWidth: (root.isOpenToNetwork ? 19 : 0) + (root.isLeftBehind ? 14 : 0)
    required property string text

    spacing: 4

    StyleText {
        id: note

        objectName: "originNote"
        Accessible.ignored: true
        Layout.fillWidth: true
        Layout.minimumWidth: 0
        color: Theme.tertiaryLabel
        font: TextStyle.caption
        text: root.text
        visible: root.text !== ""
    }
    SymbolIcon {
        color: Theme.tertiaryLabel
        name: "network"
        size: 10
        visible: root.isOpenToNetwork
    }
    SymbolIcon {
        color: Theme.tertiaryLabel
        name: "exclamationmark.triangle.fill"
        size: 10
        visible: root.isLeftBehind
    }
    // Marks alone stand at the beginning.
    Item {
        Layout.fillWidth: true
        visible: root.text === ""
    }
}
