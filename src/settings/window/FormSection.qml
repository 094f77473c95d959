// A box of rows that belong together, with an optional heading.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

ColumnLayout {
    id: root

    default property alias rows: column.data
    property string heading: ""

    Accessible.name: root.heading
    Accessible.role: Accessible.Grouping
    spacing: 6

    StyleText {
        Accessible.role: Accessible.Heading
        Layout.fillWidth: true
        Layout.leftMargin: 4
        font: TextStyle.headline
        text: root.heading
        visible: root.heading !== ""
    }
    Rectangle {
        Layout.fillWidth: true
        border.color: Theme.separator
        color: Theme.card
        implicitHeight: column.implicitHeight
        radius: 8

        ColumnLayout {
            id: column

            anchors.fill: parent
            spacing: 0
        }
    }
}
