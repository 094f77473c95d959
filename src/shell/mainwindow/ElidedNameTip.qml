// The tool tip of a list whose rows may have to cut their names off, or have a note to their names. It
// stands at the row that the pointer rests on.
//
//     ElidedNameTip { id: tip }
//     delegate: Row { onHoveredChanged: tip.follow(row) }
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

StyleToolTip {
    id: root

    property var row: null

    // To be told of rows that the pointer enters or leaves: those with `hovered` and `elidedText`.
    function follow(row: var) {
        if (row.hovered)
            root.row = row;
        else if (root.row === row)
            root.row = null;
    }

    isShown: text !== ""
    parent: root.row
    text: root.row?.elidedText ?? ""
}
