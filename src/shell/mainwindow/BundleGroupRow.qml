// An application that listens on several ports. It is made by the row that it belongs to.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.ProcessIcon
import Zenlot.Style

RowLayout {
    id: root

    property alias isElided: label.truncated
    required property SidebarRow row

    spacing: 8

    FileIconView {
        cornerRadius: 5
        iconName: root.row.groupIcon
        path: root.row.bundlePath
        size: 22
    }
    PlainText {
        id: label

        Layout.fillWidth: true
        font: TextStyle.bold(TextStyle.callout)
        text: root.row.title
    }
    PlainText {
        color: Theme.tertiaryLabel
        font: TextStyle.sized(9 * TextStyle.scale, Font.Medium)
        text: root.row.countText
    }
    SymbolIcon {
        color: Theme.secondaryLabel
        name: "chevron.right"
        rotation: root.row.isExpanded ? 90 : 0
        size: 9 * TextStyle.scale

        Behavior on rotation {
            NumberAnimation {
                duration: 180 * Theme.motion
                easing.type: Easing.InOutQuad
            }
        }
    }
}
