// The tool tip of a control. It appears when the pointer rests on the control that it is put into,
// or when the keyboard comes there, which is when it is made: most never are.
pragma ComponentBehavior: Bound

import QtQuick

Loader {
    id: root

    property int delay: 700
    property bool isShown: false
    property string text: ""

    // Of a file: the toolkit makes no component of this one in the row of a list.
    onIsShownChanged: {
        if (root.isShown && !root.item)
            root.setSource("ToolTipBubble.qml", {
                tip: root
            });
    }
}
