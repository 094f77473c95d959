// What a PortContextMenu shows: commands for the row that it was opened for.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

StyleMenu {
    id: root

    property bool canForceQuit
    required property bool copiesPid
    property string executablePath
    property int pid
    property int port
    property string rowKey
    required property ContentViewModel viewModel

    signal detailsRequested(rowKey: string)
    signal forceQuitRequested(rowKey: string)

    function popupFor(row: var) {
        root.take(row);
        root.popup();
    }

    function popupAt(row: var) {
        root.take(row);
        root.popup(row, 16, row.height, details);
    }

    // The row itself may be gone by the time that a command is chosen.
    function take(row: var) {
        root.canForceQuit = row.canForceQuit;
        root.executablePath = row.executablePath;
        root.pid = row.pid;
        root.port = row.port;
        root.rowKey = row.rowKey;
    }

    StyleMenuItem {
        id: details

        keys: root.copiesPid ? "Return" : ""
        text: qsTr("Show Details")

        onTriggered: root.detailsRequested(root.rowKey)
    }
    StyleMenuItem {
        destructive: true
        enabled: root.canForceQuit
        keys: root.copiesPid ? "Del" : ""
        text: qsTr("Force Quit…")

        onTriggered: root.forceQuitRequested(root.rowKey)
    }
    StyleMenuSeparator {}
    StyleMenuItem {
        keys: root.copiesPid ? "" : "Ctrl+C"
        text: qsTr("Copy Port")

        onTriggered: root.viewModel.copyText(root.port.toString())
    }
    StyleMenuItem {
        enabled: root.pid > 0
        keys: root.copiesPid ? "Ctrl+C" : ""
        text: qsTr("Copy PID")

        onTriggered: root.viewModel.copyText(root.pid.toString())
    }
    StyleMenuItem {
        enabled: root.executablePath !== ""
        text: qsTr("Copy Path")

        onTriggered: root.viewModel.copyText(root.executablePath)
    }
}
