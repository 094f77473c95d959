// Text that stands for itself.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

PlainText {
    id: root

    Accessible.name: root.text
    Accessible.role: Accessible.StaticText
}
