import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// The text as a QR code, as large as the sheet allows.
FocusScope {
    id: page

    readonly property QrCodeActivity activity: page.controller?.chosen as QrCodeActivity
    required property UIActivityViewController controller

    ColumnLayout {
        anchors.bottomMargin: Theme.margin
        anchors.fill: parent
        spacing: Theme.lineSpace

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.lineSpace

            IconButton {
                Layout.leftMargin: -Theme.lineSpace
                accessibleName: qsTr("Back")
                directional: true
                iconName: "chevron.left"
                onClicked: page.controller.goBack()
            }

            SheetHeader {
                Layout.fillWidth: true
                title: qsTr("QR code")
                titleIsWhole: true

                PushButton {
                    id: done

                    focus: true
                    font.bold: true
                    font.pixelSize: Theme.fontSize1
                    text: qsTr("Done")
                    onClicked: page.controller.close()
                }
            }
        }

        Item {
            id: place

            Layout.fillHeight: true
            Layout.fillWidth: true

            Column {
                anchors.centerIn: parent
                spacing: Theme.margin

                QrCodeImage {
                    Accessible.description: text
                    Accessible.name: qsTr("QR code")
                    Accessible.role: Accessible.Graphic
                    anchors.horizontalCenter: parent.horizontalCenter
                    height: width
                    radius: Theme.cardRadius
                    text: page.activity?.text ?? ""
                    width: Math.floor(Math.min(place.width, place.height - hint.height - parent.spacing))
                }

                BodyText {
                    id: hint

                    Accessible.name: text
                    Accessible.role: Accessible.StaticText
                    color: Theme.softText
                    font.pixelSize: Theme.bodyFontSize
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTr("Scan the code with a phone to take the text along.")
                    width: place.width
                    wrapMode: Text.Wrap
                }
            }
        }
    }
}
