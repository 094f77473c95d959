// The inspector: everything that is known of one process that holds a port. It shows and can be
// copied from; it does nothing to the process.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.Inspector
import Zenlot.Style

FocusScope {
    id: root

    required property ProcessDetailViewModel viewModel

    // Escape was pressed in the panel, which has no close control of its own.
    signal dismissed

    Accessible.name: qsTr("Inspector")
    Accessible.role: Accessible.Pane
    implicitHeight: 480
    implicitWidth: 290

    Component.onCompleted: root.viewModel.isShown = root.visible
    Component.onDestruction: root.viewModel.isShown = false
    Keys.onEscapePressed: root.dismissed()
    onVisibleChanged: root.viewModel.isShown = root.visible

    ColumnLayout {
        id: loading

        anchors.centerIn: parent
        spacing: 6
        visible: root.viewModel.isLoading

        SmallProgressIndicator {
            Layout.alignment: Qt.AlignHCenter
            running: root.viewModel.isLoading
        }
        StyleText {
            Layout.alignment: Qt.AlignHCenter
            color: Theme.secondaryLabel
            font: TextStyle.caption
            text: qsTr("Loading…")
        }

        AppearsLate on opacity {
            running: loading.visible
        }
    }
    // Made anew for each process, so that nothing moves from the old one's state to the new one's. A
    // Loader of this Qt refuses components of a bound file.
    Repeater {
        model: root.viewModel.hasDetails ? 1 : 0

        ProcessDetailContent {
            anchors.fill: parent
            focus: true
            viewModel: root.viewModel
        }
    }
}
