// An application that listens on several ports.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.ProcessIcon
import Zenlot.Style

RowLayout {
    id: root

    required property string bundlePath
    required property string countText
    required property string groupIcon
    property alias isElided: label.truncated
    required property bool isExpanded
    required property string name

    spacing: 8

    FileIconView {
        cornerRadius: 5
        iconName: root.groupIcon
        path: root.bundlePath
        size: 22
    }
    StyleText {
        id: label

        Accessible.ignored: true
        Layout.fillWidth: true
        font: TextStyle.bold(TextStyle.callout)
        text: root.name
    }
    StyleText {
        Accessible.ignored: true
        color: Theme.tertiaryLabel
        font: TextStyle.sized(9 * TextStyle.scale, Font.Medium)
        text: root.countText
    }
    SymbolIcon {
        color: Theme.secondaryLabel
        name: "chevron.right"
        rotation: root.isExpanded ? 90 : 0
        size: 9

        Behavior on rotation {
            NumberAnimation {
                duration: 180 * Theme.motion
                easing.type: Easing.InOutQuad
            }
        }
    }
}
