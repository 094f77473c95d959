// The first run: two pages beside each other, of which one is in view.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Onboarding
import Zenlot.Style

Rectangle {
    id: root

    // What the second page shows above its words; nothing when it is empty.
    property url movie: Qt.resolvedUrl("notification-conflict.mov")
    readonly property real pageWidth: 440
    // From the first page (0) to the second (1).
    property real position: root.viewModel.page
    required property OnboardingViewModel viewModel

    color: Theme.window
    implicitHeight: 540
    implicitWidth: root.pageWidth

    Component.onCompleted: root.viewModel.appear()

    // A spring with a response of 0.4 s (an angular frequency w of 2π / 0.4 s) and a damping
    // fraction z of 0.85. The animation's own figures are for a step of h = 16 ms: spring w²h and
    // damping 2zwh.
    Behavior on position {
        enabled: Theme.motion > 0

        SpringAnimation {
            damping: 0.427
            epsilon: 0.001
            spring: 3.948
        }
    }

    Shortcut {
        sequences: ["Ctrl+W", "Esc"]

        onActivated: root.Window.window.close()
    }
    // The window can be moved by whatever is not for something else.
    Item {
        anchors.fill: parent

        DragHandler {
            target: null

            onActiveChanged: {
                if (active)
                    root.Window.window.startSystemMove();
            }
        }
    }
    Item {
        anchors.bottom: dots.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        clip: true

        WelcomePage {
            id: welcome

            enabled: root.viewModel.page === 0
            focus: true
            height: parent.height
            viewModel: root.viewModel
            visible: x > -width
            width: root.pageWidth
            x: -root.pageWidth * root.position
        }
        MonitorPage {
            enabled: root.viewModel.page === 1
            focusReason: welcome.focusReason
            height: parent.height
            movie: root.movie
            viewModel: root.viewModel
            visible: x < width
            width: root.pageWidth
            x: root.pageWidth * (1 - root.position)
        }
    }
    PageDots {
        id: dots

        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        anchors.horizontalCenter: parent.horizontalCenter
        count: 2
        current: root.viewModel.page
    }
}
