// Text that can be selected and copied with the mouse and the keyboard, and not changed.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Style

T.TextArea {
    id: root

    Accessible.name: root.text
    Accessible.readOnly: true
    Accessible.role: Accessible.StaticText
    Accessible.selectableText: true
    activeFocusOnTab: true
    color: Theme.label
    font: TextStyle.body
    horizontalAlignment: TextEdit.AlignLeft
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 0
    readOnly: true
    selectByKeyboard: true
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accent
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap

    background: FocusRing {
        radius: 4
        visible: root.activeFocus && (root.focusReason === Qt.TabFocusReason || root.focusReason === Qt.BacktabFocusReason)
    }

    onActiveFocusChanged: {
        if (!root.activeFocus)
            root.deselect();
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
