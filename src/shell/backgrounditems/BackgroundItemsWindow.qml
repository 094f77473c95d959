// The window in which the user allows the background monitor, as large as what it says.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.BackgroundItems
import Zenlot.Style

Window {
    id: root

    required property BackgroundItemsViewModel viewModel

    color: Theme.window
    flags: Qt.Dialog | Qt.MSWindowsFixedSizeDialogHint
    height: content.implicitHeight
    title: qsTr("Login Items")
    width: content.implicitWidth

    // Back from the terminal.
    onActiveChanged: {
        if (root.active)
            root.viewModel.refresh();
    }

    BackgroundItemsContent {
        id: content

        anchors.fill: parent
        viewModel: root.viewModel

        onDismissed: root.close()
    }
}
