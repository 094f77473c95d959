// What Zenlot is, in three features.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Onboarding
import Zenlot.Style

FocusScope {
    id: root

    // How the next page gets the keyboard.
    property int focusReason: Qt.OtherFocusReason
    required property OnboardingViewModel viewModel

    ColumnLayout {
        anchors.bottomMargin: 20
        anchors.fill: parent
        anchors.leftMargin: 36
        anchors.rightMargin: 36
        anchors.topMargin: 40
        spacing: 0

        Image {
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredHeight: 88
            Layout.preferredWidth: 88
            source: "images/dev.quorvane.zenlot.svg"
            // Drawn for screens with twice as many pixels, too.
            sourceSize.height: 176
            sourceSize.width: 176
        }
        StyleText {
            Accessible.role: Accessible.Heading
            Layout.fillWidth: true
            Layout.topMargin: 16
            font: TextStyle.bold(TextStyle.title)
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Welcome to Zenlot")
            wrapMode: Text.Wrap
        }
        StyleText {
            Layout.fillWidth: true
            Layout.topMargin: 8
            color: Theme.secondaryLabel
            font: TextStyle.callout
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.15
            text: qsTr("Zenlot watches your network ports so you always know what's running — and what's blocking what.")
            wrapMode: Text.Wrap
        }
        FeatureRow {
            Layout.fillWidth: true
            Layout.topMargin: 28
            description: qsTr("Type any port number to see which process is using it.")
            symbol: "magnifyingglass.circle.fill"
            tint: Theme.vividBlue
            title: qsTr("Instant port lookup")
        }
        FeatureRow {
            Layout.fillWidth: true
            Layout.topMargin: 14
            description: qsTr("Get notified when a dev server can't start because a port is taken.")
            symbol: "bell.badge.fill"
            tint: Theme.vividOrange
            title: qsTr("Conflict notifications")
        }
        FeatureRow {
            Layout.fillWidth: true
            Layout.topMargin: 14
            description: qsTr("Free up a blocked port without opening Terminal.")
            symbol: "xmark.octagon.fill"
            tint: Theme.vividRed
            title: qsTr("One-click force quit")
        }
        Item {
            Layout.fillHeight: true
        }
        GlassButton {
            id: advanceButton

            Layout.fillWidth: true
            focus: true
            large: true
            prominent: true
            text: qsTr("Folytatás")

            onClicked: {
                root.focusReason = advanceButton.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason;
                root.viewModel.advance();
            }
        }
    }
}
