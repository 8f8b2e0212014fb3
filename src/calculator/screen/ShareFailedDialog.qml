import Vexilo.Calculator
import Vexilo.Controls

// Says that nothing on this desktop takes e-mail.
Alert {
    id: dialog

    property ContentView view

    message: qsTr("No e-mail program was found. Copy the summary instead.")
    title: qsTr("The bill could not be shared.")
    visible: dialog.view?.showShareFailed ?? false
    onClosed: dialog.view.showShareFailed = false
}
