// The large field for a port number.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Zenlot.MainWindow
import Zenlot.Style

T.TextField {
    id: root

    required property ContentViewModel viewModel

    // Types at the end, from wherever the keyboard was.
    function type(text: string) {
        root.forceActiveFocus();
        root.deselect();
        root.cursorPosition = root.length;
        root.viewModel.portInput = root.viewModel.portInput + text;
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
    font: TextStyle.sized(52, Font.Thin)
    horizontalAlignment: TextInput.AlignHCenter
    implicitHeight: contentHeight
    inputMethodHints: Qt.ImhDigitsOnly
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accent
    text: root.viewModel.portInput

    Keys.onEnterPressed: root.viewModel.performCheck()
    Keys.onReturnPressed: root.viewModel.performCheck()
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
    StyleText {
        Accessible.ignored: true
        anchors.centerIn: parent
        color: Theme.quaternaryLabel
        font: root.font
        text: "8080"
        visible: root.length === 0 && root.preeditText === ""
    }
}
