// Where the log is: cut in the middle when there is no room for it. It can be selected, and is
// copied whole when it was cut.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Item {
    id: root

    required property string path

    signal copyRequested

    implicitHeight: field.implicitHeight
    implicitWidth: 100

    TextMetrics {
        id: metrics

        elide: Text.ElideMiddle
        elideWidth: root.width
        font: field.font
        text: root.path
    }
    SelectableText {
        id: field

        Accessible.name: root.path
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.tertiaryLabel
        font: TextStyle.monospaced(TextStyle.caption)
        text: metrics.elidedText
        width: root.width
        wrapMode: TextEdit.NoWrap

        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy) && metrics.elidedText !== root.path) {
                event.accepted = true;
                root.copyRequested();
            }
        }
    }
    StyleToolTip {
        isShown: hover.hovered && metrics.elidedText !== root.path
        text: root.path
    }
    HoverHandler {
        id: hover
    }
}
