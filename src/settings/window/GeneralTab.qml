// Where the program appears, and its shortcut.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.SettingsWindow
import Zenlot.Style

ColumnLayout {
    id: root

    required property SettingsViewModel viewModel

    spacing: 18

    FormSection {
        Layout.fillWidth: true

        StyleSwitch {
            Layout.fillWidth: true
            isOn: root.viewModel.settings.showInMenuBar
            text: qsTr("Show in menu bar")

            onRequested: isOn => root.viewModel.settings.showInMenuBar = isOn
        }
        Divider {
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
        }
        StyleSwitch {
            Layout.fillWidth: true
            isOn: root.viewModel.settings.showInDock
            text: qsTr("Show in Dock")

            onRequested: isOn => root.viewModel.settings.showInDock = isOn
        }
        Divider {
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
        }
        StyleSwitch {
            Layout.fillWidth: true
            isOn: root.viewModel.settings.launchAtLogin
            text: qsTr("Launch at login")

            onRequested: isOn => root.viewModel.settings.launchAtLogin = isOn
        }
    }
    FormSection {
        Layout.fillWidth: true
        heading: qsTr("Keyboard Shortcut")

        StyleSwitch {
            Layout.fillWidth: true
            caption: qsTr("⌃⌥⇧P — opens the menu bar popover from anywhere")
            isOn: root.viewModel.settings.globalShortcutEnabled
            text: qsTr("Enable global shortcut")

            onRequested: isOn => root.viewModel.settings.globalShortcutEnabled = isOn
        }
    }
}
