// The editor of one list of exceptions.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.SettingsWindow
import Zenlot.Style

ColumnLayout {
    id: root

    property bool isAdding: false
    required property ExceptionListModel items
    required property string placeholder
    required property string title

    function beginAdding() {
        root.isAdding = true;
        draft.forceActiveFocus();
        list.positionViewAtEnd();
    }

    function endAdding() {
        root.isAdding = false;
        draft.clear();
        list.forceActiveFocus();
    }

    function removeSelected() {
        const row = list.currentIndex;
        if (row < 0)
            return;
        // Neither the row nor the button that may have been pressed can keep the keyboard.
        list.currentItem.focus = false;
        list.currentIndex = -1;
        list.forceActiveFocus();
        root.items.removeEntry(row);
    }

    spacing: 5

    StyleText {
        Layout.fillWidth: true
        color: Theme.secondaryLabel
        font: TextStyle.bold(TextStyle.caption)
        text: root.title
    }
    Rectangle {
        Layout.fillWidth: true
        border.color: Qt.alpha(Theme.secondaryLabel, 0.2)
        color: Theme.field
        implicitHeight: box.implicitHeight + 2
        radius: 6

        ColumnLayout {
            id: box

            anchors.fill: parent
            anchors.margins: 1
            spacing: 0

            // The entries, and below the last of them the one that is being typed.
            Item {
                id: rows

                readonly property int draftHeight: root.isAdding ? rows.rowHeight : 0
                readonly property int rowHeight: Math.round(24 * TextStyle.scale)

                Layout.fillWidth: true
                Layout.preferredHeight: Math.max(48 * TextStyle.scale, Math.min(140 * TextStyle.scale, list.count * rows.rowHeight + rows.draftHeight))

                ListView {
                    id: list

                    Accessible.name: root.title
                    Accessible.role: Accessible.List
                    activeFocusOnTab: true
                    boundsBehavior: Flickable.StopAtBounds
                    clip: true
                    currentIndex: -1
                    height: root.isAdding ? Math.min(list.count * rows.rowHeight, rows.height - rows.draftHeight) : rows.height
                    highlightFollowsCurrentItem: false
                    model: root.items
                    width: rows.width

                    T.ScrollBar.vertical: StyleScrollBar {}
                    delegate: T.ItemDelegate {
                        id: row

                        required property string entry
                        required property int index
                        required property bool isNumeric
                        readonly property bool isSelected: row.index === list.currentIndex

                        Accessible.name: row.entry
                        Accessible.role: Accessible.ListItem
                        Accessible.selected: row.isSelected
                        Accessible.onPressAction: row.clicked()
                        focusPolicy: Qt.NoFocus
                        height: rows.rowHeight
                        leftPadding: 8
                        rightPadding: 8
                        width: list.width

                        background: Rectangle {
                            color: row.isSelected ? Theme.selection : row.index % 2 === 1 ? Theme.quaternaryFill : "transparent"
                        }
                        contentItem: StyleText {
                            Accessible.ignored: true
                            font: row.isNumeric ? TextStyle.monospaced(TextStyle.callout) : TextStyle.callout
                            text: row.entry
                            verticalAlignment: Text.AlignVCenter
                        }

                        onClicked: {
                            list.forceActiveFocus();
                            list.currentIndex = row.index;
                        }
                    }

                    Keys.onDeletePressed: root.removeSelected()
                    onCountChanged: {
                        if (list.currentIndex >= list.count)
                            list.currentIndex = -1;
                    }
                    onCurrentIndexChanged: list.positionViewAtIndex(list.currentIndex, ListView.Contain)

                    FocusRing {
                        anchors.margins: 1
                        radius: 5
                        visible: list.activeFocus && !root.isAdding
                    }
                }
                T.TextField {
                    id: draft

                    Accessible.description: root.placeholder
                    Accessible.name: root.title
                    Accessible.role: Accessible.EditableText
                    color: Theme.label
                    font: TextStyle.callout
                    height: rows.rowHeight
                    leftPadding: 8
                    maximumLength: 1000
                    placeholderText: root.placeholder
                    placeholderTextColor: Theme.tertiaryLabel
                    rightPadding: 8
                    selectByMouse: true
                    selectedTextColor: Theme.accentText
                    selectionColor: Theme.accent
                    verticalAlignment: Text.AlignVCenter
                    visible: root.isAdding
                    width: rows.width
                    y: list.height

                    background: Rectangle {
                        color: Theme.selection

                        FocusRing {
                            anchors.margins: 0
                            radius: 2
                            visible: draft.activeFocus
                        }
                    }

                    Keys.onEscapePressed: root.endAdding()
                    // Elsewhere the key closes the window.
                    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
                    onAccepted: {
                        const typed = draft.text;
                        root.endAdding();
                        root.items.commit(typed);
                    }

                    StyleText {
                        Accessible.ignored: true
                        anchors.fill: parent
                        anchors.leftMargin: draft.leftPadding
                        color: draft.placeholderTextColor
                        font: draft.font
                        text: draft.placeholderText
                        verticalAlignment: Text.AlignVCenter
                        visible: draft.length === 0 && draft.preeditText === ""
                    }
                }
            }
            Divider {
                Layout.fillWidth: true
            }
            RowLayout {
                Layout.leftMargin: 2
                spacing: 0

                IconButton {
                    enabled: !root.isAdding
                    implicitHeight: 20 * TextStyle.scale
                    implicitWidth: 26 * TextStyle.scale
                    symbol: "plus"
                    symbolSize: 12
                    text: qsTr("Add to %1").arg(root.title)
                    toolTip: qsTr("Add")

                    onClicked: root.beginAdding()
                }
                Rectangle {
                    color: Theme.separator
                    implicitHeight: 14
                    implicitWidth: 1
                }
                IconButton {
                    enabled: list.currentIndex >= 0
                    implicitHeight: 20 * TextStyle.scale
                    implicitWidth: 26 * TextStyle.scale
                    symbol: "minus"
                    symbolSize: 12
                    text: qsTr("Remove from %1").arg(root.title)
                    toolTip: qsTr("Remove")

                    onClicked: root.removeSelected()
                }
            }
        }
    }
}
