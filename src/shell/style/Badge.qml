// A short word on a capsule of its own colour.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.Control {
    id: root

    property color fill: Qt.alpha(root.tint, 0.1)
    property real radius: root.height / 2
    required property string text
    property color tint: Theme.secondaryLabel

    Accessible.name: root.text
    Accessible.role: Accessible.StaticText
    focusPolicy: Qt.NoFocus
    font: TextStyle.bold(TextStyle.caption2)
    horizontalPadding: 6
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    verticalPadding: 2

    background: Capsule {
        color: root.fill
        radius: root.radius
    }
    contentItem: PlainText {
        color: root.tint
        font: root.font
        horizontalAlignment: Text.AlignHCenter
        text: root.text
        verticalAlignment: Text.AlignVCenter
    }
}
