// One line of the log with its mark. There are as many as fit into a window, made all at once when
// the log is opened: they are kept plain.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.LogViewer
import Zenlot.Style

T.ItemDelegate {
    id: root

    property real drawingOffset: 0
    required property int index
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
    signal copyRequested
    signal toggleMark

    Accessible.name: root.lineText
    Accessible.role: Accessible.ListItem
    Accessible.checkable: true
    Accessible.checked: root.isMarked
    Accessible.onPressAction: root.toggleMark()
    bottomPadding: 2
    focusPolicy: Qt.NoFocus
    implicitHeight: line.contentHeight + topPadding + bottomPadding
    leftPadding: 5
    rightPadding: 5
    topPadding: 2

    onClicked: root.toggleMark()

    Rectangle {
        color: root.isMarked ? Qt.alpha(Theme.yellow, 0.16) : "transparent"
        height: root.height
        radius: 4
        width: root.width
        y: root.drawingOffset

        // In the button itself it would make a right click one that counts as a click, too.
        TapHandler {
            acceptedButtons: Qt.RightButton

            onTapped: root.contextMenuRequested()
        }
    }
    SymbolIcon {
        color: root.isMarked ? Theme.yellow : Theme.tertiaryLabel
        name: root.isMarked ? "bookmark.fill" : "bookmark"
        size: 10 * TextStyle.scale
        x: root.leftPadding + (14 * TextStyle.scale - width) / 2
        y: line.y + Math.round((line.contentHeight / line.lineCount - height) / 2)
    }
    TextEdit {
        id: line

        Accessible.ignored: true
        color: root.textColor
        font: TextStyle.monospaced(TextStyle.sized(11 * TextStyle.scale, Font.Normal))
        horizontalAlignment: TextEdit.AlignLeft
        readOnly: true
        selectByMouse: true
        selectedTextColor: Theme.accentText
        selectionColor: Theme.accent
        text: root.lineText
        textFormat: TextEdit.PlainText
        width: root.width - x - root.rightPadding
        wrapMode: TextEdit.Wrap
        x: root.leftPadding + 14 * TextStyle.scale + 6
        y: root.topPadding + root.drawingOffset

        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy) && line.selectedText === "") {
                event.accepted = true;
                root.copyRequested();
            }
        }
        onActiveFocusChanged: {
            if (!line.activeFocus) {
                line.deselect();
                line.focus = false; // the row itself is what the keyboard comes back to
            }
        }

        // The text takes clicks for its selection, so the row does not hear of them.
        TapHandler {
            onTapped: root.toggleMark()
        }
        HoverHandler {
            cursorShape: Qt.IBeamCursor
        }
    }
}
