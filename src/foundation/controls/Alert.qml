import Vexilo.Controls

// Says one thing and waits until it was read.
DialogFrame {
    id: alert

    initialFocus: button
    buttons: DialogButton {
        id: button

        preferred: true
        text: qsTr("OK")
        onClicked: alert.close()
    }
}
