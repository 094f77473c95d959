// A label and its value, which can be copied.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

RowLayout {
    id: root

    required property string label
    required property string value

    spacing: 8

    // On the line of the value, whatever the typeface of the user's language is.
    StyleText {
        Layout.alignment: Qt.AlignBaseline
        Layout.maximumWidth: 80 * TextStyle.scale
        Layout.minimumWidth: 80 * TextStyle.scale
        color: Theme.secondaryLabel
        font: TextStyle.caption
        text: root.label
        wrapMode: Text.Wrap
    }
    SelectableText {
        Accessible.description: root.label
        Layout.alignment: Qt.AlignBaseline
        Layout.fillWidth: true
        font: TextStyle.monospaced(TextStyle.caption)
        text: root.value
    }
}
