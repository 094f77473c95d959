// The main window.
import QtQuick
import QtQuick.Controls
import Zenlot.MainWindow

ApplicationWindow {
    id: root

    required property ContentViewModel viewModel

    height: 480
    minimumHeight: 380
    minimumWidth: 580
    title: "Zenlot"
    visible: true
    width: 720

    ContentView {
        anchors.fill: parent
        viewModel: root.viewModel
    }
}
