// What can be copied of a row.
pragma ComponentBehavior: Bound

import Zenlot.MainWindow
import Zenlot.Style

StyleMenu {
    id: root

    required property ContentViewModel viewModel
    property string executablePath
    property int pid
    property int port

    function popupFor(rowPort: int, rowPid: int, rowPath: string) {
        root.port = rowPort;
        root.pid = rowPid;
        root.executablePath = rowPath;
        root.popup();
    }

    StyleMenuItem {
        text: qsTr("Copy Port")

        onTriggered: root.viewModel.copyText(root.port.toString())
    }
    StyleMenuItem {
        enabled: root.pid > 0
        text: qsTr("Copy PID")

        onTriggered: root.viewModel.copyText(root.pid.toString())
    }
    StyleMenuItem {
        enabled: root.executablePath !== ""
        text: qsTr("Copy Path")

        onTriggered: root.viewModel.copyText(root.executablePath)
    }
}
