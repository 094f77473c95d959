// The icon of a file, a folder, an application bundle or another application.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.ProcessIcon

IconSquare {
    id: root

    // Of the desktop, where it is known and goes before that of the file.
    property string iconName: ""
    required property string path

    source: FileIconSource {
        cornerRadius: root.cornerRadius
        iconName: root.iconName
        isShown: root.visible
        path: root.path
        size: root.size
    }
}
