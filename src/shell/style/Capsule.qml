// A background with fully rounded ends.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Rectangle {
    id: root

    color: Theme.quaternaryFill
    radius: root.height / 2
}
