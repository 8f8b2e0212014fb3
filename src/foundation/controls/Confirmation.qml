import Vexilo.Controls

// Asks before something is lost. The safe choice has the keyboard.
DialogFrame {
    id: confirmation

    required property string confirmText

    signal confirmed

    initialFocus: cancel
    buttons: [
        DialogButton {
            id: cancel

            preferred: true
            text: qsTr("Cancel")
            onClicked: confirmation.reject()
        },
        DialogButton {
            destructive: true
            text: confirmation.confirmText
            onClicked: confirmation.accept()
        }
    ]
    onAccepted: confirmed()
}
