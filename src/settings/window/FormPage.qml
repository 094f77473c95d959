// A page of a form, as high as what is on it, and scrolled when there is no room for that. What gets
// the keyboard comes into view.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

Flickable {
    id: root

    readonly property Item focusItem: root.Window.activeFocusItem
    readonly property real margin: 20
    default property alias page: holder.data

    function reveal(item: Item) {
        let ancestor = item;
        while (ancestor && ancestor !== holder)
            ancestor = ancestor.parent;
        if (!ancestor)
            return;
        const top = item.mapToItem(holder, 0, 0).y;
        const bottom = top + item.height + 2 * root.margin;
        root.contentY = Math.max(0, Math.min(top, Math.max(root.contentY, bottom - root.height)));
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: holder.height + 2 * root.margin
    contentWidth: root.width
    implicitHeight: root.contentHeight
    implicitWidth: 440 * TextStyle.scale

    T.ScrollBar.vertical: StyleScrollBar {}

    onFocusItemChanged: root.reveal(root.focusItem)

    Item {
        id: holder

        height: childrenRect.height
        width: root.width - 2 * root.margin
        x: root.margin
        y: root.margin
    }
}
