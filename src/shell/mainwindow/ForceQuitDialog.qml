// Asks whether a process is to be ended.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

ConfirmDialog {
    id: root

    required property ContentViewModel viewModel

    cancelText: qsTr("Cancel")
    destructiveText: root.viewModel.confirmationButton
    message: root.viewModel.confirmationMessage
    title: qsTr("Force Quit Process?")
    visible: root.viewModel.isConfirming

    onAccepted: root.viewModel.confirmForceQuit()
    onRejected: root.viewModel.cancelForceQuit()
}
