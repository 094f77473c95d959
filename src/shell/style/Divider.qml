// A thin line between two things, horizontal unless told otherwise.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Rectangle {
    id: root

    property int orientation: Qt.Horizontal

    Accessible.ignored: true
    color: Theme.separator
    implicitHeight: root.orientation === Qt.Horizontal ? 1 : 14
    implicitWidth: root.orientation === Qt.Horizontal ? 14 : 1
}
