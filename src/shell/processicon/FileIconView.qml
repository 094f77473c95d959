// The icon of a file, a folder or an application bundle.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.ProcessIcon

IconSquare {
    id: root

    required property string path

    source: FileIconSource {
        cornerRadius: root.cornerRadius
        isShown: root.visible
        path: root.path
        size: root.size
    }
}
