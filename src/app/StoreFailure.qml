import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// The only window of a program that cannot open the saved bills.
T.ApplicationWindow {
    id: window

    required property string message

    color: Theme.page
    height: Math.max(minimumHeight, content.implicitHeight + 2 * Theme.margin)
    minimumHeight: 240
    minimumWidth: 420
    title: qsTr("Vexilo")
    visible: true
    width: 480

    Shortcut {
        sequences: ["Escape", "Ctrl+Q"]
        onActivated: Qt.quit()
    }

    Item {
        Accessible.name: heading.text
        Accessible.role: Accessible.Dialog
        anchors.fill: parent

        ColumnLayout {
            id: content

            LayoutMirroring.childrenInherit: true
            LayoutMirroring.enabled: Theme.rightToLeft
            anchors.fill: parent
            anchors.margins: Theme.margin
            spacing: Theme.lineSpace

            BodyText {
                id: heading

                Layout.fillWidth: true
                font.bold: true
                text: qsTr("The saved bills could not be opened.")
                wrapMode: Text.Wrap
            }

            BodyText {
                Accessible.name: text
                Accessible.role: Accessible.StaticText
                Layout.fillHeight: true
                Layout.fillWidth: true
                color: Theme.softText
                font.pixelSize: Theme.bodyFontSize
                text: window.message
                verticalAlignment: Text.AlignTop
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            }

            DialogButton {
                Layout.fillHeight: false
                Layout.fillWidth: false
                Layout.alignment: Qt.AlignRight
                Layout.preferredWidth: 120
                focus: true
                preferred: true
                text: qsTr("OK")
                onClicked: Qt.quit()
            }
        }
    }
}
