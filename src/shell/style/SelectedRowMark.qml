// What tells the selected row of a list from the others: a tint, and a bar at its beginning for
// those who can't see that.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Rectangle {
    id: root

    color: Theme.selection
    radius: 7

    Rectangle {
        color: Theme.focus
        height: parent.height - 12
        radius: 1.5
        width: 3
        x: 2
        y: 6
    }
}
