// The offer to enable the background monitor, and what came of it.
//
// The main action of the page has the keyboard, whichever it is at the time.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.Onboarding
import Zenlot.Style

FocusScope {
    id: root

    // How the keyboard came to where it is: only somebody who works with the keyboard sees it.
    property int focusReason: Qt.OtherFocusReason
    required property url movie
    required property OnboardingViewModel viewModel

    function focusMainAction() {
        const main = finishButton.visible ? finishButton : loginItemsButton.visible ? loginItemsButton : enableButton;
        if (root.visible && main.enabled)
            main.forceActiveFocus(root.focusReason);
    }

    onVisibleChanged: {
        root.focusMainAction();
        clip.load();
    }

    ColumnLayout {
        anchors.bottomMargin: 20
        anchors.fill: parent
        anchors.topMargin: 28
        spacing: 0

        Loader {
            id: clip

            // Of a type that is not known before it is loaded.
            readonly property var video: clip.item

            function load() {
                if (root.visible && clip.visible && clip.status === Loader.Null)
                    clip.setSource("ConflictClip.qml", {
                        objectName: "video",
                        url: root.movie
                    });
            }

            Layout.bottomMargin: 20
            Layout.fillWidth: true
            Layout.preferredHeight: 150
            visible: String(root.movie) !== "" && clip.status !== Loader.Error && !clip.video?.failed && root.Window.visibility !== Window.Hidden
        }
        StyleText {
            Accessible.role: Accessible.Heading
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.rightMargin: 36
            font: TextStyle.bold(TextStyle.title)
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Background Monitor")
            wrapMode: Text.Wrap
        }
        StyleText {
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.rightMargin: 36
            Layout.topMargin: 8
            color: Theme.secondaryLabel
            font: TextStyle.callout
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.15
            text: qsTr("A lightweight daemon that watches for port conflicts around the clock — even when Zenlot isn't running. You'll be notified the moment a crash blocks your dev server.")
            wrapMode: Text.Wrap
        }
        // What the service of the desktop has to say may be long.
        Flickable {
            id: problem

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.maximumHeight: problemText.implicitHeight
            Layout.minimumHeight: Math.min(problemText.implicitHeight, 40)
            Layout.rightMargin: 36 - scrollBar.width // which stands beside the words
            Layout.topMargin: 10
            boundsBehavior: Flickable.StopAtBounds
            clip: problem.contentHeight > problem.height
            contentHeight: problemText.implicitHeight
            visible: root.viewModel.installError !== ""

            T.ScrollBar.vertical: StyleScrollBar {
                id: scrollBar
            }

            SelectableText {
                id: problemText

                color: Theme.red
                font: TextStyle.caption
                horizontalAlignment: Text.AlignHCenter
                text: root.viewModel.installError
                width: problem.width - scrollBar.width
            }
        }
        Item {
            Layout.fillHeight: true
            Layout.minimumHeight: 12
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.rightMargin: 36
            spacing: 12
            visible: root.viewModel.daemonInstalled

            SymbolLabel {
                Layout.alignment: Qt.AlignHCenter
                Layout.maximumWidth: root.width - 72
                color: Theme.green
                font: TextStyle.bold(TextStyle.callout)
                symbol: "checkmark.circle.fill"
                text: qsTr("Background monitor enabled")
            }
            GlassButton {
                id: finishButton

                Layout.fillWidth: true
                large: true
                prominent: true
                text: qsTr("Folytatás")

                onClicked: root.viewModel.finish()
                onVisibleChanged: root.focusMainAction()
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.rightMargin: 36
            spacing: 10
            visible: !root.viewModel.daemonInstalled && root.viewModel.needsApproval

            GlassButton {
                id: loginItemsButton

                Layout.fillWidth: true
                large: true
                prominent: true
                text: qsTr("Open Login Items")

                onClicked: root.viewModel.openLoginItems()
                onVisibleChanged: root.focusMainAction()
            }
            GlassButton {
                Layout.alignment: Qt.AlignHCenter
                Layout.maximumWidth: root.width - 72
                text: qsTr("I've enabled it — re-check")

                onClicked: root.viewModel.recheckApproval()
            }
            PlainButton {
                Layout.alignment: Qt.AlignHCenter
                Layout.bottomMargin: -4
                text: qsTr("Skip for now")

                onClicked: root.viewModel.finish()
            }
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.leftMargin: 36
            Layout.rightMargin: 36
            spacing: 10
            visible: !root.viewModel.daemonInstalled && !root.viewModel.needsApproval

            GlassButton {
                id: enableButton

                Layout.fillWidth: true
                enabled: !root.viewModel.daemonInstalling
                large: true
                opacity: enabled ? 1 : 0.7
                prominent: true
                text: root.viewModel.daemonInstalling ? qsTr("Installing…") : qsTr("Enable")

                contentItem: Item {
                    Row {
                        anchors.centerIn: parent
                        spacing: 8

                        SmallProgressIndicator {
                            anchors.verticalCenter: parent.verticalCenter
                            color: enableButton.tint
                            running: root.viewModel.daemonInstalling
                            visible: running
                        }
                        PlainText {
                            color: enableButton.tint
                            font: enableButton.font
                            text: enableButton.text
                        }
                    }
                }

                onClicked: {
                    root.focusReason = enableButton.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason;
                    root.viewModel.enableBackgroundMonitor();
                }
                onEnabledChanged: root.focusMainAction()
            }
            PlainButton {
                Layout.alignment: Qt.AlignHCenter
                Layout.bottomMargin: -4
                text: qsTr("Skip for now")

                onClicked: root.viewModel.finish()
            }
        }
    }
}
