import Vexilo.Calculator
import Vexilo.Controls

// Says that the bill could not be saved, and why.
Alert {
    id: dialog

    property ContentView view

    message: dialog.view?.saveFailure ?? ""
    title: qsTr("The bill could not be saved.")
    visible: dialog.view?.showSaveFailed ?? false
    onClosed: dialog.view.showSaveFailed = false
}
