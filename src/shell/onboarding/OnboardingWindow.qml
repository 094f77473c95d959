// The window of the first run.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Onboarding
import Zenlot.Style

Window {
    id: root

    property alias movie: view.movie
    required property OnboardingViewModel viewModel

    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    height: view.implicitHeight
    maximumHeight: root.height
    maximumWidth: root.width
    minimumHeight: root.height
    minimumWidth: root.width
    objectName: "onboarding"
    title: qsTr("Welcome to Zenlot")
    width: view.implicitWidth

    OnboardingView {
        id: view

        anchors.fill: parent
        viewModel: root.viewModel
    }
    Connections {
        function onFinished() {
            root.close();
        }

        target: root.viewModel
    }
}
