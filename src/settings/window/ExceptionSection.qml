// The exceptions of one monitor. What was begun in it is lost when the section goes.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.SettingsWindow

ColumnLayout {
    id: root

    required property ExceptionListModel apps
    required property string heading
    required property ExceptionListModel ports
    required property bool shown

    visible: root.shown

    Repeater {
        model: root.shown ? 1 : 0

        FormSection {
            Layout.fillWidth: true
            heading: root.heading

            ColumnLayout {
                Layout.margins: 12
                spacing: 14

                ExceptionList {
                    Layout.fillWidth: true
                    items: root.ports
                    placeholder: qsTr("e.g. 3000")
                    title: qsTr("Ignored ports")
                }
                ExceptionList {
                    Layout.fillWidth: true
                    items: root.apps
                    placeholder: qsTr("e.g. python")
                    title: qsTr("Ignored processes")
                }
            }
        }
    }
}
