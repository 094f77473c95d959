// A colour of the theme with its name.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

RowLayout {
    id: root

    required property color color
    required property string name

    spacing: 8

    Rectangle {
        border.color: Theme.separator
        color: root.color
        implicitHeight: 22
        implicitWidth: 34
        radius: 5
    }
    StyleText {
        Layout.preferredWidth: 92
        font: TextStyle.caption
        text: root.name
    }
}
