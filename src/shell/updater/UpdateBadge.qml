// The program's icon, with a small sign at its corner that says how the check stands.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style
import Zenlot.Updater

Item {
    id: root

    readonly property bool hasSign: root.isNewer || root.isCurrent || root.viewModel.canTryAgain
    readonly property bool isChecking: root.viewModel.state === UpdateViewModel.Checking
    readonly property bool isCurrent: root.viewModel.state === UpdateViewModel.Current
    readonly property bool isNewer: root.viewModel.state === UpdateViewModel.Newer
    required property UpdateViewModel viewModel

    implicitHeight: 64
    implicitWidth: 64

    Image {
        Accessible.ignored: true
        anchors.fill: parent
        source: "dev.quorvane.zenlot.svg"
        sourceSize.height: root.height
        sourceSize.width: root.width
    }
    Rectangle {
        color: Theme.window
        height: width
        radius: width / 2
        visible: root.isChecking || root.hasSign
        width: 28
        x: root.width - width + 5
        y: root.height - height + 5

        SmallProgressIndicator {
            anchors.centerIn: parent
            running: root.isChecking
            size: 18
            visible: running
        }
        SymbolIcon {
            anchors.centerIn: parent
            color: root.isNewer ? Theme.vividBlue : root.isCurrent ? Theme.vividGreen : Theme.vividOrange
            name: root.isNewer ? "arrow.up.circle.fill" : root.isCurrent ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
            size: 22
            visible: root.hasSign
        }
    }
}
