// A titled part of the sheet.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Style

ColumnLayout {
    id: root

    required property string title

    spacing: 8

    StyleText {
        color: Theme.tertiaryLabel
        font: TextStyle.bold(TextStyle.caption)
        text: root.title
    }
}
