// The exceptions of one monitor. What was begun in it is lost when the section goes.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Zenlot.SettingsWindow
import Zenlot.Style

Loader {
    id: root

    required property ExceptionListModel apps
    required property string heading
    required property ExceptionListModel ports
    required property bool shown

    active: root.shown
    visible: root.shown

    sourceComponent: FormSection {
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
