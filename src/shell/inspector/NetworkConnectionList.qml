// The TCP sockets of the process. A few lie open below each other; of a busy server's thousands
// only those in sight exist, in a list that scrolls by itself.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Inspector
import Zenlot.Style

ListView {
    id: root

    required property NetworkConnectionModel connections
    required property string title

    Accessible.name: root.title
    Accessible.role: Accessible.List
    activeFocusOnTab: root.interactive
    boundsBehavior: Flickable.StopAtBounds
    clip: root.interactive
    implicitHeight: root.interactive ? 360 : root.contentHeight
    interactive: root.connections.count > 100
    keyNavigationEnabled: root.interactive
    model: root.connections

    T.ScrollBar.vertical: StyleScrollBar {}
    delegate: NetworkConnectionRow {
        width: ListView.view.width
    }

    FocusRing {
        visible: root.activeFocus
    }
}
