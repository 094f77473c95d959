// Text in the program's look. Whatever it shows is plain text on one line, elided, unless a
// wrapMode is chosen.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Text {
    id: root

    Accessible.name: root.text
    Accessible.role: Accessible.StaticText
    color: Theme.label
    elide: Text.ElideRight
    font: TextStyle.body
    // Names written from the right keep to the edge that all others begin at.
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: root.wrapMode === Text.NoWrap ? 1 : 1000
    textFormat: Text.PlainText
}
