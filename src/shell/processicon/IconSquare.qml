// A square that shows a turning wheel while an icon is searched for, then the icon, or the network
// symbol where there is none. It is an ornament: the name beside it says what it means.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.ProcessIcon
import Zenlot.Style

Item {
    id: root

    required property real cornerRadius
    required property real size
    readonly property string shown: root.source.isLoading || picture.status === Image.Loading ? "loading" : picture.status === Image.Ready ? "picture" : "symbol"
    required property IconSource source

    Accessible.ignored: true
    implicitHeight: root.size
    implicitWidth: root.size

    Image {
        id: picture

        anchors.centerIn: parent
        asynchronous: true
        height: root.size
        opacity: root.shown === "picture" ? 1 : 0
        source: root.source.icon
        sourceSize.height: root.size
        sourceSize.width: root.size
        visible: opacity > 0
        width: root.size

        Behavior on opacity {
            NumberAnimation {
                duration: 150 * Theme.motion
                easing.type: Easing.InOutQuad
            }
        }
    }
    SmallProgressIndicator {
        id: wheel

        anchors.centerIn: parent
        running: visible
        visible: root.shown === "loading"

        // So that an icon that comes at once shows none.
        NumberAnimation on opacity {
            duration: 150 * Theme.motion
            easing.type: Easing.InOutQuad
            from: 0
            running: wheel.visible
            to: 1
        }
    }
    Rectangle {
        id: symbol

        anchors.centerIn: parent
        color: Theme.quaternaryFill
        height: root.size
        radius: root.cornerRadius
        visible: root.shown === "symbol"
        width: root.size

        SymbolIcon {
            anchors.centerIn: parent
            color: Theme.secondaryLabel
            name: symbol.visible ? "network" : "" // drawn only when it is seen
            size: root.size * 0.48
        }
    }
}
