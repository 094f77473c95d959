// What can be done with a row that is a port or one of its owners, and copied of it. It is made when
// somebody opens it.
pragma ComponentBehavior: Bound

import QtQuick
import Zenlot.MainWindow

Loader {
    id: root

    // What Ctrl+C copies of the row.
    property bool copiesPid: false
    required property ContentViewModel viewModel

    signal detailsRequested(rowKey: string)
    signal forceQuitRequested(rowKey: string)

    function isOpenedBy(event: var): bool {
        return event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier));
    }

    // Of a file: the toolkit makes no component of this one beside the rows of a list.
    function make(): PortMenu {
        if (!root.item)
            root.setSource("PortMenu.qml", {
                copiesPid: root.copiesPid,
                parent: root,
                viewModel: root.viewModel
            });
        return root.item as PortMenu;
    }

    // Below the pointer, about a row of either list.
    function popupFor(row: var) {
        root.make().popupFor(row);
    }

    // At the row, with the first command chosen.
    function popupAt(row: var) {
        root.make().popupAt(row);
    }

    Connections {
        function onDetailsRequested(rowKey: string) {
            root.detailsRequested(rowKey);
        }

        function onForceQuitRequested(rowKey: string) {
            root.forceQuitRequested(rowKey);
        }

        target: root.item
    }
}
