// What can be done with a row that is a port or one of its owners, and copied of it.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow
import Zenlot.Style

StyleMenu {
    id: root

    required property ContentViewModel viewModel
    property bool canForceQuit
    // What Ctrl+C copies of the row.
    property bool copiesPid: false
    property string executablePath
    property int pid
    property int port
    property string rowKey

    signal detailsRequested(rowKey: string)
    signal forceQuitRequested(rowKey: string)

    function isOpenedBy(event: var): bool {
        return event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier));
    }

    // Below the pointer, about a row of either list.
    function popupFor(row: var) {
        root.take(row);
        root.popup();
    }

    // At the row, with the first command chosen.
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
