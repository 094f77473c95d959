// A page of a form, as high as what is on it, and scrolled when there is no room for that.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

Flickable {
    id: root

    default property alias page: holder.data
    readonly property real margin: 20

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: holder.height + 2 * root.margin
    contentWidth: root.width
    implicitHeight: root.contentHeight
    implicitWidth: 440

    T.ScrollBar.vertical: StyleScrollBar {}

    Item {
        id: holder

        height: childrenRect.height
        width: root.width - 2 * root.margin
        x: root.margin
        y: root.margin
    }
}
