// The settings in three tabs. Each tab has a size of its own, which the view takes as its implicit
// size; the window follows it.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.SettingsWindow
import Zenlot.Style

FocusScope {
    id: root

    required property Component logTab
    property alias selectedTab: tabs.currentIndex
    required property SettingsViewModel viewModel

    implicitHeight: header.implicitHeight + content.implicitHeight
    implicitWidth: content.implicitWidth

    Rectangle {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        color: Theme.sidebar
        implicitHeight: tabs.implicitHeight + 17

        T.TabBar {
            id: tabs

            Accessible.name: qsTr("Settings")
            Accessible.role: Accessible.PageTabList
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            implicitHeight: contentItem.implicitHeight
            implicitWidth: contentItem.implicitWidth
            spacing: 4
            y: 8

            contentItem: RowLayout {
                spacing: tabs.spacing

                Repeater {
                    model: tabs.contentModel
                }
            }

            SettingsTabButton {
                symbol: "gearshape"
                text: qsTr("General")
            }
            SettingsTabButton {
                symbol: "antenna.radiowaves.left.and.right"
                text: qsTr("Port Monitoring")
            }
            SettingsTabButton {
                symbol: "doc.text"
                text: qsTr("Log")
            }
        }
        Divider {
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: parent.right
        }
    }
    // One tab exists at a time: what a tab does when it appears, it does every time.
    Loader {
        id: content

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        sourceComponent: root.selectedTab === 0 ? general : root.selectedTab === 1 ? portMonitoring : log
    }
    Component {
        id: general

        FormPage {
            GeneralTab {
                viewModel: root.viewModel
                width: parent.width
            }
        }
    }
    Component {
        id: portMonitoring

        FormPage {
            PortMonitoringTab {
                viewModel: root.viewModel
                width: parent.width
            }
        }
    }
    Component {
        id: log

        Loader {
            height: 460
            sourceComponent: root.logTab
            width: 680
        }
    }
}
