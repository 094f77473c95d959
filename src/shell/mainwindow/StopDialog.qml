// Tells what will end with a server, and asks whether it is to be stopped.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

ConfirmDialog {
    id: root

    required property ContentViewModel viewModel

    cancelText: root.viewModel.stopButton === "" ? qsTr("Close") : qsTr("Cancel")
    destructiveText: root.viewModel.stopButton
    message: root.viewModel.stopMessage
    title: qsTr("Stop the Server?")
    visible: root.viewModel.isAskingToStop

    onAccepted: root.viewModel.confirmStop()
    onRejected: root.viewModel.cancelStop()
}
