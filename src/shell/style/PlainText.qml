// Text in the program's look that assistive technology is not told of: a part of something that has
// a name. Plain text on one line, elided, unless a wrapMode is chosen.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

Text {
    id: root

    color: Theme.label
    elide: Text.ElideRight
    font: TextStyle.body
    // Names written from the right keep to the edge that all others begin at.
    horizontalAlignment: Text.AlignLeft
    maximumLineCount: root.wrapMode === Text.NoWrap ? 1 : 1000
    textFormat: Text.PlainText
}
