// A symbol with its words, centred in whatever room there is; the words give way.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

Item {
    id: root

    property color color: Theme.label
    property font font: TextStyle.body
    property real spacing: 6
    property string symbol: ""
    property color symbolColor: root.color
    property real symbolSize: root.font.pixelSize + 2
    property string text: ""

    Accessible.name: root.text
    Accessible.role: Accessible.StaticText
    implicitHeight: row.implicitHeight
    implicitWidth: row.implicitWidth

    RowLayout {
        id: row

        anchors.centerIn: parent
        spacing: root.spacing
        width: Math.min(implicitWidth, root.width)

        SymbolIcon {
            color: root.symbolColor
            name: root.symbol
            size: root.symbolSize
            visible: root.symbol !== ""
        }
        PlainText {
            Layout.fillWidth: true
            color: root.color
            font: root.font
            text: root.text
            visible: root.text !== ""
        }
    }
}
