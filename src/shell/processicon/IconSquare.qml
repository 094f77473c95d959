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
    required property IconSource source

    Accessible.ignored: true
    implicitHeight: root.size
    implicitWidth: root.size

    states: [
        State {
            name: "loading"
            when: root.source.isLoading || picture.status === Image.Loading

            PropertyChanges {
                indicator.opacity: 1
            }
        },
        State {
            name: "picture"
            when: picture.status === Image.Ready

            PropertyChanges {
                picture.opacity: 1
            }
        },
        State {
            name: "symbol"
            when: picture.status === Image.Null || picture.status === Image.Error

            PropertyChanges {
                symbol.opacity: 1
            }
        }
    ]
    // The wheel fades in too, so that an icon that comes at once shows none.
    transitions: Transition {
        NumberAnimation {
            duration: 150 * Theme.motion
            easing.type: Easing.InOutQuad
            property: "opacity"
        }
    }

    SmallProgressIndicator {
        id: indicator

        anchors.centerIn: parent
        opacity: 0
        running: visible
        visible: opacity > 0
    }
    Image {
        id: picture

        anchors.centerIn: parent
        asynchronous: true
        height: root.size
        opacity: 0
        source: root.source.icon
        sourceSize.height: root.size
        sourceSize.width: root.size
        visible: opacity > 0
        width: root.size
    }
    Rectangle {
        id: symbol

        anchors.centerIn: parent
        color: Theme.quaternaryFill
        height: root.size
        opacity: 0
        radius: root.cornerRadius
        visible: opacity > 0
        width: root.size

        SymbolIcon {
            anchors.centerIn: parent
            color: Theme.secondaryLabel
            name: symbol.visible ? "network" : "" // drawn only when it is seen
            size: root.size * 0.48
        }
    }
}
