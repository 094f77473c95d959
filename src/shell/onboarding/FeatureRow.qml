// A feature: its symbol, its name, and what it is good for.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

RowLayout {
    id: root

    required property string description
    required property string symbol
    required property color tint
    required property string title

    spacing: 12

    Item {
        Layout.alignment: Qt.AlignVCenter
        Layout.preferredHeight: symbolIcon.height
        Layout.preferredWidth: 26 * TextStyle.scale

        SymbolIcon {
            id: symbolIcon

            anchors.centerIn: parent
            color: root.tint
            name: root.symbol
            size: 20 * TextStyle.scale
        }
    }
    ColumnLayout {
        Layout.fillWidth: true
        spacing: 2

        StyleText {
            Layout.fillWidth: true
            font: TextStyle.bold(TextStyle.callout)
            text: root.title
            wrapMode: Text.Wrap
        }
        StyleText {
            Layout.fillWidth: true
            color: Theme.secondaryLabel
            font: TextStyle.caption
            text: root.description
            wrapMode: Text.Wrap
        }
    }
}
