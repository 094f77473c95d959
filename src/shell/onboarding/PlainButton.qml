// A button of words only, for what stands back behind the page's main action.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.AbstractButton {
    id: root

    Accessible.name: root.text
    Accessible.role: Accessible.Button
    Accessible.onPressAction: root.clicked()
    font: TextStyle.callout
    horizontalPadding: 10
    hoverEnabled: true
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    verticalPadding: 4

    background: Item {
    }
    contentItem: PlainText {
        color: root.down || root.hovered ? Theme.label : Theme.secondaryLabel
        font: root.font
        horizontalAlignment: Text.AlignHCenter
        text: root.text
    }

    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    FocusRing {
        anchors.margins: 0
        radius: height / 2
    }
}
