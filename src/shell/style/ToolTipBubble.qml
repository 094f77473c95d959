// What a StyleToolTip shows.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.ToolTip {
    id: root

    required property StyleToolTip tip

    bottomPadding: 4
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    delay: root.tip.delay
    font: TextStyle.sized(11 * TextStyle.scale, Font.Normal)
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: Math.min(340, contentWidth + leftPadding + rightPadding)
    leftPadding: 8
    margins: 6
    parent: root.tip.parent
    rightPadding: 8
    text: root.tip.text
    topPadding: 4
    visible: root.tip.isShown
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + 6 : 0

    background: PopoverBackground {
        depth: 5
        radius: 6
    }
    contentItem: StyleText {
        font: root.font
        text: root.text
        wrapMode: Text.Wrap
    }
    enter: Transition {
        NumberAnimation {
            duration: 120 * Theme.motion
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: 120 * Theme.motion
            property: "opacity"
            to: 0
        }
    }
}
