// The line between two groups of a StyleMenu.
pragma ComponentBehavior: Bound

import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Style

T.MenuSeparator {
    id: root

    Layout.fillWidth: true
    horizontalPadding: 9
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    verticalPadding: 5

    contentItem: Divider {}
}
