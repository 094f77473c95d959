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

    required property Item logTab
    property alias selectedTab: tabs.currentIndex
    readonly property Item shownTab: pages.children[root.selectedTab]
    required property SettingsViewModel viewModel

    implicitHeight: header.implicitHeight + (notice.visible ? notice.height + 16 : 0) + root.shownTab.implicitHeight
    implicitWidth: root.shownTab.implicitWidth

    Shortcut {
        sequences: ["Ctrl+PgUp", "Ctrl+Shift+Tab"]

        onActivated: tabs.turnTo(tabs.currentIndex - 1)
    }
    Shortcut {
        sequences: ["Ctrl+PgDown", "Ctrl+Tab"]

        onActivated: tabs.turnTo(tabs.currentIndex + 1)
    }
    Rectangle {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        color: Theme.sidebar
        implicitHeight: tabs.implicitHeight + 17

        T.TabBar {
            id: tabs

            // By a key, with which the keyboard goes to that tab.
            function turnTo(index: int) {
                tabs.currentIndex = Math.max(0, Math.min(tabs.count - 1, index));
                tabs.currentItem.forceActiveFocus(Qt.TabFocusReason);
            }

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

            Keys.onLeftPressed: tabs.turnTo(tabs.currentIndex - 1)
            Keys.onRightPressed: tabs.turnTo(tabs.currentIndex + 1)

            SettingsTabButton {
                focus: true
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
    Notice {
        id: notice

        anchors.left: parent.left
        anchors.margins: 8
        anchors.right: parent.right
        anchors.top: header.bottom
        text: root.viewModel.notice

        onDismissed: {
            tabs.currentItem.forceActiveFocus();
            root.viewModel.dismissNotice();
        }
    }
    Item {
        id: pages

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: notice.visible ? notice.bottom : header.bottom
        anchors.topMargin: notice.visible ? 8 : 0

        FormPage {
            anchors.fill: parent
            visible: root.selectedTab === 0

            GeneralTab {
                viewModel: root.viewModel
                width: parent.width
            }
        }
        FormPage {
            anchors.fill: parent
            visible: root.selectedTab === 1

            PortMonitoringTab {
                viewModel: root.viewModel
                width: parent.width
            }
        }
        Item {
            anchors.fill: parent
            data: [root.logTab]
            implicitHeight: 460 * TextStyle.scale
            implicitWidth: 680 * TextStyle.scale
            visible: root.selectedTab === 2
        }
    }
}
