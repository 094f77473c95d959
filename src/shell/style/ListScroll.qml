// Brings rows of a list into sight. Of a long way only the end is shown.
//
//     ListScroll { id: scroll; list: rows }
//     onCurrentIndexChanged: scroll.reveal(rows.currentIndex)
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

NumberAnimation {
    id: root

    required property ListView list

    function reveal(row: int) {
        if (row < 0)
            return;
        root.stop();
        const start = root.list.contentY;
        root.list.positionViewAtIndex(row, ListView.Contain);
        const end = root.list.contentY;
        if (end === start)
            return;
        const way = Math.min(Math.abs(end - start), root.list.height);
        root.from = end > start ? end - way : end + way;
        root.to = end;
        root.start();
    }

    duration: 200 * Theme.motion
    easing.type: Easing.InOutQuad
    property: "contentY"
    target: root.list
}
