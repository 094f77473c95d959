// The main window.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.Inspector
import Zenlot.MainWindow
import Zenlot.Style

T.ApplicationWindow {
    id: root

    required property ProcessDetailViewModel detailViewModel
    required property ContentViewModel viewModel

    color: Theme.window
    height: 560
    minimumHeight: 380
    minimumWidth: 580
    objectName: "main"
    title: "Zenlot"
    width: 860

    ContentView {
        anchors.fill: parent
        viewModel: root.viewModel

        inspector: ProcessDetailPanel {
            anchors.fill: parent
            viewModel: root.detailViewModel

            onDismissed: root.viewModel.closeInspector()
        }
    }
    // As in the menu of the status item, which is not there on every desktop.
    Shortcut {
        sequence: "Ctrl+,"

        onActivated: root.viewModel.openSettings()
    }
    Shortcut {
        sequence: "Ctrl+W"

        onActivated: root.close()
    }
}
