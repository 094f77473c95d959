// The two monitors, what kept one from being registered, and what each leaves out.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.SettingsWindow
import Zenlot.Style

ColumnLayout {
    id: root

    required property SettingsViewModel viewModel

    spacing: 18

    onVisibleChanged: {
        if (root.visible) {
            root.viewModel.syncConflictMonitoringWithAgent();
            root.viewModel.lookForBindwatch();
        }
    }

    FormSection {
        Layout.fillWidth: true

        StyleSwitch {
            Layout.fillWidth: true
            caption: qsTr("Show a notification whenever any new process starts listening on a port")
            isOn: root.viewModel.settings.portMonitoringEnabled
            text: qsTr("Notify on all port activity")

            onRequested: isOn => root.viewModel.settings.portMonitoringEnabled = isOn
        }
        Divider {
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
        }
        StyleSwitch {
            id: conflictSwitch

            Layout.fillWidth: true
            caption: qsTr("Monitors dev runtimes in the background and notifies you when a port conflict is detected. Runs automatically at login.")
            isOn: root.viewModel.settings.conflictMonitoringEnabled
            text: qsTr("Conflict Monitoring")

            onRequested: isOn => root.viewModel.setConflictMonitoring(isOn)
        }
        SelectableText {
            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.leftMargin: 12
            Layout.rightMargin: 12
            activeFocusOnTab: false
            color: Theme.secondaryLabel
            font: TextStyle.caption
            objectName: "bindwatchLine"
            text: root.viewModel.hasBindwatch ? qsTr("The system tells of refused ports exactly.") : qsTr("For exact alerts an administrator turns on the helper of the system: %1").arg("\n" + root.viewModel.bindwatchCommand)
        }
    }
    // The button goes with the problem.
    Connections {
        function onNeedsApprovalChanged() {
            if (!root.viewModel.needsApproval && recheckButton.activeFocus)
                conflictSwitch.forceActiveFocus(recheckButton.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason);
        }

        target: root.viewModel
    }
    FormSection {
        Layout.fillWidth: true
        visible: root.viewModel.installError !== ""

        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 12
            spacing: 10

            SelectableText {
                Layout.fillWidth: true
                color: Theme.red
                font: TextStyle.caption
                text: root.viewModel.installError
            }
            GridLayout {
                columnSpacing: 10
                columns: openButton.implicitWidth + recheckButton.implicitWidth + 34 > root.width ? 1 : 2
                rowSpacing: 10
                visible: root.viewModel.needsApproval

                GlassButton {
                    id: openButton

                    text: qsTr("Open Login Items")

                    onClicked: root.viewModel.openLoginItems()
                }
                GlassButton {
                    id: recheckButton

                    text: qsTr("I've enabled it — re-check")

                    onClicked: root.viewModel.recheckBackgroundApproval()
                }
            }
        }
    }
    ExceptionSection {
        Layout.fillWidth: true
        apps: root.viewModel.monitorApps
        heading: qsTr("Port Activity Exceptions")
        ports: root.viewModel.monitorPorts
        shown: root.viewModel.settings.portMonitoringEnabled
    }
    ExceptionSection {
        Layout.fillWidth: true
        apps: root.viewModel.conflictApps
        heading: qsTr("Conflict Monitoring Exceptions")
        ports: root.viewModel.conflictPorts
        shown: root.viewModel.settings.conflictMonitoringEnabled
    }
}
