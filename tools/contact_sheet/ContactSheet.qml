// Everything that Zenlot.Style offers, on one page.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Zenlot.ContactSheet
import Zenlot.Style

Rectangle {
    id: root

    readonly property bool isReady: dialog.opened && menu.opened && tip.opened
    required property var symbols

    color: Theme.window
    height: 1180
    width: 1120

    Rectangle {
        color: Theme.sidebar
        height: parent.height
        width: 268

        Divider {
            anchors.right: parent.right
            height: parent.height
            orientation: Qt.Vertical
        }
        ColumnLayout {
            anchors.left: parent.left
            anchors.margins: 24
            anchors.right: parent.right
            anchors.top: parent.top
            spacing: 26

            RowLayout {
                spacing: 12

                Image {
                    Layout.preferredHeight: 64
                    Layout.preferredWidth: 64
                    source: "qrc:/pictures/dev.quorvane.zenlot.svg"
                    sourceSize.height: 64
                    sourceSize.width: 64
                }
                ColumnLayout {
                    spacing: 6

                    StyleText {
                        font: TextStyle.bold(TextStyle.title)
                        text: "Zenlot"
                    }
                    StyleText {
                        color: Theme.secondaryLabel
                        font: TextStyle.callout
                        text: Theme.isDark ? "dark" : "light"
                    }
                }
            }
            RowLayout {
                spacing: 10

                Repeater {
                    model: [22, 28, 40]

                    Image {
                        required property int modelData

                        Layout.preferredHeight: modelData
                        Layout.preferredWidth: modelData
                        source: "qrc:/qt/qml/Zenlot/Style/images/nodejs.svg"
                        sourceSize.height: modelData
                        sourceSize.width: modelData
                    }
                }
                Repeater {
                    model: [16, 24, 40]

                    Image {
                        required property int modelData

                        Layout.preferredHeight: modelData
                        Layout.preferredWidth: modelData
                        source: "qrc:/pictures/dev.quorvane.zenlot.svg"
                        sourceSize.height: modelData
                        sourceSize.width: modelData
                    }
                }
            }
            SheetBlock {
                title: "Colours"

                GridLayout {
                    columnSpacing: 4
                    columns: 1
                    rowSpacing: 5

                    Repeater {
                        model: [
                            {
                                "name": "label",
                                "color": Theme.label
                            },
                            {
                                "name": "secondaryLabel",
                                "color": Theme.secondaryLabel
                            },
                            {
                                "name": "tertiaryLabel",
                                "color": Theme.tertiaryLabel
                            },
                            {
                                "name": "quaternaryLabel",
                                "color": Theme.quaternaryLabel
                            },
                            {
                                "name": "accent",
                                "color": Theme.accent
                            },
                            {
                                "name": "accentText",
                                "color": Theme.accentText
                            },
                            {
                                "name": "focus",
                                "color": Theme.focus
                            },
                            {
                                "name": "window",
                                "color": Theme.window
                            },
                            {
                                "name": "sidebar",
                                "color": Theme.sidebar
                            },
                            {
                                "name": "field",
                                "color": Theme.field
                            },
                            {
                                "name": "popover",
                                "color": Theme.popover
                            },
                            {
                                "name": "card",
                                "color": Theme.card
                            },
                            {
                                "name": "quaternaryFill",
                                "color": Theme.quaternaryFill
                            },
                            {
                                "name": "glass",
                                "color": Theme.glass
                            },
                            {
                                "name": "separator",
                                "color": Theme.separator
                            },
                            {
                                "name": "hover",
                                "color": Theme.hover
                            },
                            {
                                "name": "pressed",
                                "color": Theme.pressed
                            },
                            {
                                "name": "selection",
                                "color": Theme.selection
                            },
                            {
                                "name": "green",
                                "color": Theme.green
                            },
                            {
                                "name": "blue",
                                "color": Theme.blue
                            },
                            {
                                "name": "orange",
                                "color": Theme.orange
                            },
                            {
                                "name": "red",
                                "color": Theme.red
                            },
                            {
                                "name": "teal",
                                "color": Theme.teal
                            },
                            {
                                "name": "vividGreen",
                                "color": Theme.vividGreen
                            },
                            {
                                "name": "vividBlue",
                                "color": Theme.vividBlue
                            },
                            {
                                "name": "vividOrange",
                                "color": Theme.vividOrange
                            },
                            {
                                "name": "vividRed",
                                "color": Theme.vividRed
                            },
                            {
                                "name": "yellow",
                                "color": Theme.yellow
                            }
                        ]

                        Swatch {
                            required property var modelData

                            color: modelData.color
                            name: modelData.name
                        }
                    }
                }
            }
        }
    }
    ColumnLayout {
        spacing: 26
        width: 380
        x: 296
        y: 24

        SheetBlock {
            title: "Text"

            StyleText {
                font: TextStyle.sized(52, Font.Thin)
                text: "8080"
            }
            StyleText {
                font: TextStyle.largeTitle
                text: "Large title 26"
            }
            StyleText {
                font: TextStyle.title
                text: "Title 22"
            }
            StyleText {
                font: TextStyle.title3
                text: "Title 3, 15"
            }
            StyleText {
                font: TextStyle.headline
                text: "Headline 13, semibold"
            }
            StyleText {
                text: "Body 13"
            }
            StyleText {
                color: Theme.secondaryLabel
                font: TextStyle.callout
                text: "Callout 12, secondary"
            }
            StyleText {
                color: Theme.tertiaryLabel
                font: TextStyle.caption
                text: "Caption 10, tertiary"
            }
            StyleText {
                color: Theme.quaternaryLabel
                font: TextStyle.callout
                text: "Enter a port number (callout, quaternary)"
            }
            StyleText {
                Layout.maximumWidth: 300
                font: TextStyle.callout
                text: "Hostile <b>name</b>\nwith a second line and much more text than there is room"
            }
            SelectableText {
                Layout.preferredWidth: 300
                font: TextStyle.monospaced(TextStyle.caption)
                text: "/usr/bin/python3 -m http.server 8080 --directory /srv/www --bind 0.0.0.0"

                Component.onCompleted: select(9, 16)
            }
        }
        SheetBlock {
            title: "Badges and capsule"

            RowLayout {
                spacing: 6

                Badge {
                    text: "tcp4"
                    tint: Theme.blue
                }
                Badge {
                    text: "LISTEN"
                    tint: Theme.green
                }
                Badge {
                    text: "CLOSE_WAIT"
                    tint: Theme.orange
                }
                Badge {
                    text: "SYN_SENT"
                }
                Badge {
                    fill: Theme.quaternaryFill
                    horizontalPadding: 5
                    radius: 4
                    text: "tcp6"
                    verticalPadding: 1
                }
                Capsule {
                    implicitHeight: 18
                    implicitWidth: 44
                }
            }
        }
        SheetBlock {
            title: "Buttons"

            RowLayout {
                spacing: 8

                GlassButton {
                    symbol: "xmark.octagon.fill"
                    text: "Force Quit"
                }
                GlassButton {
                    symbol: "trash"
                    text: "Clear"

                    FocusRing {
                        radius: height / 2
                        visible: true
                    }
                }
                GlassButton {
                    enabled: false
                    symbol: "bookmark.slash"
                    text: "Unmark"
                }
                Item {
                    implicitWidth: 60

                    StyleToolTip {
                        id: front

                        delay: 0
                        text: "Tool tip"
                    }
                    ToolTipBubble {
                        id: tip

                        closePolicy: T.Popup.NoAutoClose
                        tip: front
                        visible: true
                        y: -implicitHeight / 2
                    }
                }
            }
            RowLayout {
                spacing: 8

                GlassButton {
                    Layout.preferredWidth: 180
                    large: true
                    prominent: true
                    text: "Continue"
                }
                GlassButton {
                    Layout.preferredWidth: 120
                    large: true
                    text: "Enable"
                }
            }
            RowLayout {
                spacing: 4

                IconButton {
                    symbol: "arrow.clockwise"
                    text: "Refresh"
                }
                IconButton {
                    enabled: false
                    symbol: "arrow.clockwise"
                    text: "Refresh"
                }
                IconButton {
                    symbol: "sidebar.left"
                    text: "Toggle Sidebar"
                }
                IconButton {
                    symbol: "sidebar.right"
                    text: "Toggle Inspector"
                }
                Divider {
                    orientation: Qt.Vertical
                }
                SmallProgressIndicator {}
                SmallProgressIndicator {
                    implicitHeight: 24
                    implicitWidth: 24
                }
                SymbolLabel {
                    Layout.leftMargin: 10
                    color: Theme.secondaryLabel
                    font: TextStyle.callout
                    spacing: 5
                    symbol: "checkmark.circle.fill"
                    symbolColor: Theme.vividGreen
                    text: "Port 8080 is free"
                }
            }
        }
        SheetBlock {
            Layout.fillWidth: true
            title: "Sections"

            CollapsibleSection {
                Layout.fillWidth: true
                title: "Identity"

                Repeater {
                    model: [["Parent", "systemd (1)"], ["Port", "8080"], ["Address", "127.0.0.1:8080"]]

                    RowLayout {
                        id: line

                        required property var modelData

                        spacing: 8

                        StyleText {
                            Layout.preferredWidth: 80
                            color: Theme.secondaryLabel
                            font: TextStyle.caption
                            horizontalAlignment: Text.AlignRight
                            text: line.modelData[0]
                        }
                        SelectableText {
                            Layout.fillWidth: true
                            font: TextStyle.monospaced(TextStyle.caption)
                            text: line.modelData[1]
                        }
                    }
                }
            }
            CollapsibleSection {
                Layout.fillWidth: true
                expanded: false
                title: "Network (3)"

                StyleText {
                    text: "closed"
                }
            }
            Divider {
                Layout.fillWidth: true
            }
            Rectangle {
                Layout.fillWidth: true
                color: Theme.selection
                implicitHeight: 44
                radius: 7

                RowLayout {
                    anchors.fill: parent
                    anchors.margins: 10
                    spacing: 10

                    Rectangle {
                        color: Theme.quaternaryFill
                        implicitHeight: 28
                        implicitWidth: 28
                        radius: 6

                        SymbolIcon {
                            anchors.centerIn: parent
                            color: Theme.secondaryLabel
                            name: "network"
                            size: 28 * 0.48
                        }
                    }
                    ColumnLayout {
                        spacing: 2

                        RowLayout {
                            spacing: 5

                            StyleText {
                                font: TextStyle.bold(TextStyle.callout)
                                text: "python3.11"
                            }
                            Badge {
                                text: "tcp4"
                                tint: Theme.blue
                            }
                            Badge {
                                text: "LISTEN"
                                tint: Theme.green
                            }
                            Item {
                                Layout.fillWidth: true
                            }
                            StyleText {
                                color: Theme.tertiaryLabel
                                font: TextStyle.monospaced(TextStyle.caption2)
                                text: "PID 4711"
                            }
                        }
                        RowLayout {
                            StyleText {
                                color: Theme.secondaryLabel
                                font: TextStyle.monospaced(TextStyle.caption)
                                text: "*:8080"
                            }
                            StyleText {
                                color: Theme.tertiaryLabel
                                font: TextStyle.caption
                                text: "1000"
                            }
                        }
                    }
                }
            }
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 24

            Item {
                id: dialogPlace

                implicitHeight: 250
                implicitWidth: 320

                ConfirmDialog {
                    id: dialog

                    destructiveText: "Force Quit python3.11"
                    message: "Force-quit python3.11 (PID 4711)? Any unsaved work will be lost."
                    modal: false
                    parent: dialogPlace
                    title: "Force Quit Process?"
                    visible: true
                }
            }
        }
    }
    ColumnLayout {
        spacing: 26
        width: 380
        x: 716
        y: 24

        SheetBlock {
            title: "Symbols at 10, 16, 24 and 48"

            GridLayout {
                columnSpacing: 14
                columns: 1
                rowSpacing: 2

                Repeater {
                    model: root.symbols

                    RowLayout {
                        id: symbolRow

                        required property string modelData

                        spacing: 16

                        Repeater {
                            model: [10, 16, 24, 48]

                            Item {
                                id: cell

                                required property int modelData

                                implicitHeight: 50
                                implicitWidth: modelData

                                SymbolIcon {
                                    anchors.centerIn: parent
                                    color: Theme.label
                                    name: symbolRow.modelData
                                    size: cell.modelData
                                }
                            }
                        }
                        StyleText {
                            Layout.preferredWidth: 190
                            color: Theme.secondaryLabel
                            font: TextStyle.caption
                            text: symbolRow.modelData
                        }
                    }
                }
            }
        }
        RowLayout {
            spacing: 16

            Item {
                id: menuPlace

                implicitHeight: 120
                implicitWidth: 200

                StyleMenu {
                    id: menu

                    closePolicy: T.Popup.NoAutoClose
                    modal: false
                    parent: menuPlace
                    visible: true

                    StyleMenuItem {
                        keys: "Ctrl+C"
                        text: "Copy Port"
                    }
                    StyleMenuItem {
                        text: "Copy PID"
                    }
                    StyleMenuItem {
                        enabled: false
                        text: "Copy Path"
                    }
                    StyleMenuSeparator {}
                    StyleMenuItem {
                        destructive: true
                        keys: "Del"
                        symbol: "xmark.octagon.fill"
                        text: "Force Quit…"
                    }
                }
            }
            ListView {
                T.ScrollBar.vertical: StyleScrollBar {}
                clip: true
                implicitHeight: 100
                implicitWidth: 150
                model: 30

                delegate: StyleText {
                    required property int index

                    font: TextStyle.callout
                    height: 20
                    text: "Line " + index
                }
            }
        }
    }
}
