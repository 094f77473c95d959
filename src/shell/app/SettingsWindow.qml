// The settings window, as large as the tab that it shows.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.LogViewer
import Zenlot.SettingsWindow
import Zenlot.Style

T.ApplicationWindow {
    id: root

    // What window managers put around it, at most.
    readonly property int frame: 48
    required property LogTabViewModel logViewModel
    // On the way to the size that is wanted.
    property real shownHeight: root.wantedHeight
    property real shownWidth: root.wantedWidth
    required property SettingsViewModel viewModel
    readonly property real wantedHeight: Math.min(view.implicitHeight, Screen.desktopAvailableHeight - 80)
    readonly property real wantedWidth: view.implicitWidth

    // The window grows downwards and to the right. Where that would take it off the screen it moves
    // first; window managers may cut it short otherwise.
    function makeRoom() {
        if (!root.visible)
            return;
        const right = Screen.virtualX + Math.min(Screen.width, Screen.desktopAvailableWidth);
        const bottom = Screen.virtualY + Math.min(Screen.height, Screen.desktopAvailableHeight);
        root.x = Math.min(root.x, right - root.frame - root.wantedWidth);
        root.y = Math.min(root.y, bottom - root.frame - root.wantedHeight);
    }

    color: Theme.window
    height: root.shownHeight
    // Window managers hold a step to the limits of the step before.
    maximumHeight: Math.max(root.shownHeight, root.wantedHeight)
    maximumWidth: Math.max(root.shownWidth, root.wantedWidth)
    minimumHeight: Math.min(root.shownHeight, root.wantedHeight)
    minimumWidth: Math.min(root.shownWidth, root.wantedWidth)
    objectName: "settings"
    title: qsTr("Settings")
    width: root.shownWidth

    onWantedHeightChanged: root.makeRoom()
    onWantedWidthChanged: root.makeRoom()

    Behavior on shownHeight {
        enabled: root.visible

        NumberAnimation {
            duration: 280 * Theme.motion
            easing.type: Easing.InOutQuad
        }
    }
    Behavior on shownWidth {
        enabled: root.visible

        NumberAnimation {
            duration: 280 * Theme.motion
            easing.type: Easing.InOutQuad
        }
    }

    SettingsView {
        id: view

        anchors.fill: parent
        focus: true
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
