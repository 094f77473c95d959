// The story: a server does not start, the alert comes and says who is in the way, one click, and
// the server starts. Ends as it begins, so that it can be repeated without a jolt.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.OnboardingClip

Rectangle {
    id: root

    // From 0 to 1 in a second, again and again. Pauses would go by the clock of the machine if
    // nothing moved beside them.
    property real beat
    property alias playing: story.running

    height: 150
    width: 440

    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            color: "#2f47c4"
            position: 0
        }
        GradientStop {
            color: "#4a74ee"
            position: 0.55
        }
        GradientStop {
            color: "#6fa4ff"
            position: 1
        }
    }

    Terminal {
        id: terminal

        cursorShown: root.beat < 0.5
        height: 150
        width: 330
        x: 18
        y: 16
    }
    ConflictAlert {
        id: alert

        readonly property real restingX: root.width - width - 14
        property real shownPart: 0

        opacity: Math.min(1, alert.shownPart * 2)
        x: alert.restingX + (1 - alert.shownPart) * (alert.width + 40)
        y: 14
    }
    Image {
        id: pointer

        // From the lower right to the button.
        property real approach: 0

        height: 22
        opacity: Math.min(1, pointer.approach * 5)
        source: "pointer.svg"
        sourceSize.height: 44
        sourceSize.width: 32
        width: 16
        x: 400 + (alert.restingX + alert.killPoint.x - alert.x - 400) * pointer.approach
        y: 152 + (alert.killPoint.y - 152) * pointer.approach
    }

    NumberAnimation on beat {
        duration: 1000
        from: 0
        loops: Animation.Infinite
        to: 1
    }
    SequentialAnimation {
        id: story

        running: true

        PauseAnimation {
            duration: 250
        }
        NumberAnimation {
            duration: 550
            property: "firstTyping"
            target: terminal
            to: 1
        }
        PauseAnimation {
            duration: 150
        }
        PropertyAction {
            property: "failing"
            target: terminal
            value: 1
        }
        PauseAnimation {
            duration: 350
        }
        PropertyAction {
            property: "failed"
            target: terminal
            value: 1
        }
        PauseAnimation {
            duration: 450
        }
        NumberAnimation {
            duration: 480
            easing.overshoot: 0.7
            easing.type: Easing.OutBack
            property: "shownPart"
            target: alert
            to: 1
        }
        PauseAnimation {
            duration: 350
        }
        NumberAnimation {
            duration: 620
            easing.type: Easing.InOutCubic
            property: "approach"
            target: pointer
            to: 1
        }
        PropertyAction {
            property: "killHovered"
            target: alert
            value: true
        }
        PauseAnimation {
            duration: 230
        }
        PropertyAction {
            property: "killDown"
            target: alert
            value: true
        }
        PauseAnimation {
            duration: 160
        }
        PropertyAction {
            property: "killDown"
            target: alert
            value: false
        }
        PauseAnimation {
            duration: 80
        }
        ParallelAnimation {
            NumberAnimation {
                duration: 320
                easing.type: Easing.InCubic
                property: "shownPart"
                target: alert
                to: 0
            }
            NumberAnimation {
                duration: 260
                property: "opacity"
                target: pointer
                to: 0
            }
        }
        NumberAnimation {
            duration: 330
            property: "secondTyping"
            target: terminal
            to: 1
        }
        PauseAnimation {
            duration: 120
        }
        PropertyAction {
            property: "starting"
            target: terminal
            value: 1
        }
        PauseAnimation {
            duration: 300
        }
        PropertyAction {
            property: "started"
            target: terminal
            value: 1
        }
        PauseAnimation {
            duration: 1000
        }
        NumberAnimation {
            duration: 200
            property: "linesOpacity"
            target: terminal
            to: 0
        }
    }
}
