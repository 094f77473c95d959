// The icon of a process, found when the view appears and again when its pid changes.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.ProcessIcon

IconSquare {
    id: root

    required property string executablePath
    readonly property url icon: root.source.icon
    readonly property bool isLoading: root.source.isLoading
    required property int pid

    source: ProcessIconSource {
        cornerRadius: root.cornerRadius
        executablePath: root.executablePath
        isShown: root.visible
        pid: root.pid
        size: root.size
    }
}
