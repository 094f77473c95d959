// The settings window, as large as the tab that it shows.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import Zenlot.LogViewer
import Zenlot.SettingsWindow
import Zenlot.Style

ApplicationWindow {
    id: root

    required property LogTabViewModel logViewModel
    required property SettingsViewModel viewModel

    color: Theme.window
    height: Math.min(view.implicitHeight, Screen.desktopAvailableHeight - 80)
    maximumHeight: root.height
    maximumWidth: root.width
    minimumHeight: root.height
    minimumWidth: root.width
    objectName: "settings"
    title: qsTr("Settings")
    width: view.implicitWidth

    Behavior on height {
        enabled: root.visible

        NumberAnimation {
            duration: 280
            easing.type: Easing.InOutQuad
        }
    }
    Behavior on width {
        enabled: root.visible

        NumberAnimation {
            duration: 280
            easing.type: Easing.InOutQuad
        }
    }

    SettingsView {
        id: view

        anchors.fill: parent
        viewModel: root.viewModel

        logTab: LogTabView {
            anchors.fill: parent
            viewModel: root.logViewModel
        }
    }
    Shortcut {
        sequences: ["Ctrl+W", "Esc"]

        onActivated: root.close()
    }
}
