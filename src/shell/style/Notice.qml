// Says what is wrong and needs nobody's hand, until it is dismissed; without words it is not there.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

Rectangle {
    id: root

    required property string text

    signal dismissed

    color: Qt.alpha(Theme.orange, 0.12)
    implicitHeight: content.implicitHeight + 16
    implicitWidth: content.implicitWidth + 24
    radius: 8
    visible: root.text !== ""

    GridLayout {
        id: content

        anchors.left: parent.left
        anchors.margins: 12
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        columnSpacing: 10
        columns: root.width < 320 ? 1 : 2
        rowSpacing: 8

        StyleText {
            Layout.fillWidth: true
            font: TextStyle.callout
            text: root.text
            wrapMode: Text.Wrap
        }
        GlassButton {
            Layout.alignment: Qt.AlignRight
            text: qsTr("OK")

            onClicked: root.dismissed()
        }
    }
}
