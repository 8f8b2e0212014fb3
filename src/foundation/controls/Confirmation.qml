import Vexilo.Controls

// Asks before something is lost or replaced. The safe choice has the keyboard.
DialogFrame {
    id: confirmation

    required property string confirmText
    property bool destructive: true

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
            destructive: confirmation.destructive
            text: confirmation.confirmText
            onClicked: confirmation.accept()
        }
    ]
    onAccepted: confirmed()
}
