// Whose details these are.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Inspector
import Zenlot.ProcessIcon
import Zenlot.Style

RowLayout {
    id: root

    required property ProcessDetailViewModel viewModel

    spacing: 10

    ProcessIconView {
        cornerRadius: 9
        executablePath: root.viewModel.executablePath
        pid: root.viewModel.pid
        size: 40
    }
    ColumnLayout {
        spacing: 2

        StyleText {
            id: title

            Accessible.role: Accessible.Heading
            Layout.fillWidth: true
            font: TextStyle.headline
            text: root.viewModel.title

            HoverHandler {
                id: pointer
            }
            StyleToolTip {
                isShown: title.truncated && pointer.hovered
                text: title.text
            }
        }
        StyleText {
            Layout.fillWidth: true
            color: Theme.secondaryLabel
            font: TextStyle.caption
            text: root.viewModel.subtitle
            visible: root.viewModel.subtitle !== ""
        }
    }
}
