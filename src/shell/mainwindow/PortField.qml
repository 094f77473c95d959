// The large field for a port number.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

T.TextField {
    id: root

    // What it may be wide: its own width comes from a layout, which loses what happens while it sets it.
    required property real room
    required property ContentViewModel viewModel

    // Takes a key that came to something else, with the keyboard, if it is one for a number.
    function take(event: var): bool {
        const isPlain = !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier));
        if (event.matches(StandardKey.Paste)) {
            root.selectAndFocus();
            root.paste();
        } else if (isPlain && root.isDigit(event.text)) {
            root.forceActiveFocus();
            root.viewModel.typeDigit(event.text);
            root.cursorPosition = root.length;
        } else if (isPlain && event.key === Qt.Key_Backspace) {
            root.forceActiveFocus();
            root.viewModel.portInput = root.viewModel.portInput.slice(0, -1);
            root.cursorPosition = root.length;
        } else {
            return false;
        }
        return true;
    }

    function isDigit(text: string): bool {
        return /^[0-9]$/.test(text);
    }

    function selectAndFocus() {
        root.forceActiveFocus();
        root.selectAll();
    }

    function clearAndFocus() {
        root.viewModel.portInput = "";
        root.forceActiveFocus();
    }

    Accessible.name: qsTr("Port")
    color: Theme.label
    // Five digits fit into the narrowest field at the usual size.
    font: TextStyle.sized(52 * Math.max(1, Math.min(TextStyle.scale, root.room / 178)), Font.Thin)
    horizontalAlignment: TextInput.AlignHCenter
    implicitHeight: contentHeight
    inputMethodHints: Qt.ImhDigitsOnly
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accent
    text: root.viewModel.portInput

    Keys.onEnterPressed: root.viewModel.performCheck()
    Keys.onPressed: event => {
        if ([Qt.Key_Left, Qt.Key_Right, Qt.Key_Home, Qt.Key_End].includes(event.key))
            root.viewModel.goIntoNumber();
        else if (root.isDigit(event.text) && root.cursorPosition === root.length && root.viewModel.beginsNewNumber())
            root.selectAll();
        event.accepted = false;
    }
    Keys.onReturnPressed: root.viewModel.performCheck()
    onPressed: root.viewModel.goIntoNumber()
    onTextEdited: root.viewModel.portInput = root.text

    // Typing takes the field's text out of its binding, and a refused character stays otherwise.
    Connections {
        function onPortInputChanged() {
            if (root.text !== root.viewModel.portInput)
                root.text = root.viewModel.portInput;
        }

        target: root.viewModel
    }

    // A field's own placeholder hides while a centred field has the focus.
    PlainText {
        anchors.centerIn: parent
        color: Theme.quaternaryLabel
        font: root.font
        text: "8080"
        visible: root.length === 0 && root.preeditText === ""
    }
}
