// The main window.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.App
import Zenlot.Inspector
import Zenlot.MainWindow
import Zenlot.Style

T.ApplicationWindow {
    id: root

    property WindowCommands commands: null
    required property ProcessDetailViewModel detailViewModel
    required property ContentViewModel viewModel

    color: Theme.window
    height: 560
    minimumHeight: Math.min(380 * TextStyle.scale, Screen.desktopAvailableHeight)
    minimumWidth: Math.min(580 * TextStyle.scale, Screen.desktopAvailableWidth)
    objectName: "main"
    title: "Zenlot"
    width: 860

    // Once: the size is the user's from then on.
    Component.onCompleted: {
        root.height = Math.min(560 * TextStyle.scale, Screen.desktopAvailableHeight);
        root.width = Math.min(860 * TextStyle.scale, Screen.desktopAvailableWidth);
    }

    ContentView {
        id: view

        anchors.fill: parent
        hasMenuButton: root.commands?.needsButton ?? false
        viewModel: root.viewModel

        inspector: ProcessDetailPanel {
            anchors.fill: parent
            viewModel: root.detailViewModel

            onDismissed: root.viewModel.closeInspector()
        }

        onMenuRequested: button => root.commands?.openMenu(button)
    }
    Shortcut {
        sequence: "F10"

        onActivated: view.requestMenu()
    }
    // As in the menu of the status item, which is not there on every desktop.
    Shortcut {
        sequence: "Ctrl+Q"

        onActivated: root.commands?.quit()
    }
    Shortcut {
        sequence: "Ctrl+,"

        onActivated: root.viewModel.openSettings()
    }
    Shortcut {
        sequence: "Ctrl+W"

        onActivated: root.close()
    }
}
