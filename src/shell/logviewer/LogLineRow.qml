// One line of the log with its mark.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.LogViewer
import Zenlot.Style

T.ItemDelegate {
    id: root

    required property int index
    required property bool isCurrent
    required property bool isMarked
    required property string lineText
    required property int tint
    readonly property color textColor: {
        switch (root.tint) {
        case LogLineTint.Red:
            return Theme.red;
        case LogLineTint.Orange:
            return Theme.orange;
        case LogLineTint.Green:
            return Theme.green;
        case LogLineTint.Teal:
            return Theme.teal;
        default:
            return Qt.alpha(Theme.label, 0.75);
        }
    }

    signal contextMenuRequested
    signal toggleMark

    Accessible.name: root.lineText
    Accessible.role: Accessible.ListItem
    Accessible.checkable: true
    Accessible.checked: root.isMarked
    Accessible.onPressAction: root.toggleMark()
    bottomPadding: 2
    focusPolicy: Qt.NoFocus
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    leftPadding: 5
    rightPadding: 5
    topPadding: 2

    onClicked: root.toggleMark()

    background: Rectangle {
        color: root.isMarked ? Qt.alpha(Theme.yellow, 0.16) : "transparent"
        radius: 4

        FocusRing {
            anchors.margins: 0
            radius: 4
            visible: root.isCurrent
        }
    }
    contentItem: RowLayout {
        spacing: 6

        Item {
            Layout.alignment: Qt.AlignTop
            implicitHeight: 15
            implicitWidth: 14

            SymbolIcon {
                anchors.centerIn: parent
                color: root.isMarked ? Theme.yellow : Theme.tertiaryLabel
                name: root.isMarked ? "bookmark.fill" : "bookmark"
                size: 10
            }
        }
        SelectableText {
            Accessible.ignored: true
            Layout.fillWidth: true
            activeFocusOnTab: false
            color: root.textColor
            font: TextStyle.monospaced(TextStyle.sized(11, Font.Normal))
            text: root.lineText
            wrapMode: TextEdit.WrapAnywhere

            // The text takes clicks for its selection, so the row does not hear of them.
            TapHandler {
                onTapped: root.toggleMark()
            }
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton

        onTapped: root.contextMenuRequested()
    }
}
