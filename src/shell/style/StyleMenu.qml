// A menu, for example of a row. Fill it with StyleMenuItem and StyleMenuSeparator.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.Menu {
    id: root

    cascade: true
    font: TextStyle.body
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.max(160, contentWidth + leftPadding + rightPadding)
    margins: 6
    modal: true
    padding: 5

    T.Overlay.modal: Item {}
    background: PopoverBackground {
        depth: 10
        radius: 9
    }
    // Menus are short: a column, unlike a list, is as wide as its widest item.
    contentItem: ColumnLayout {
        spacing: 0

        Repeater {
            model: root.contentModel
        }
    }
    delegate: StyleMenuItem {}
    enter: Transition {
        NumberAnimation {
            duration: 90 * Theme.motion
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: 90 * Theme.motion
            property: "opacity"
            to: 0
        }
    }
}
