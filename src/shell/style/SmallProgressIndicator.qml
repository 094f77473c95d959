// A small wheel that turns while something of unknown length goes on, and else shows nothing. For
// people who want nothing to move it stands still.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.Style

SymbolIcon {
    id: root

    property bool running: true
    readonly property int spokes: 8
    property int step

    color: Theme.secondaryLabel
    name: root.running ? "progress.wheel" : ""
    rotation: root.step * 360 / root.spokes

    NumberAnimation on step {
        duration: 880
        from: 0
        loops: Animation.Infinite
        running: root.running && root.visible && Theme.motion > 0
        to: root.spokes
    }
}
