import Vexilo.Calculator
import Vexilo.Controls

// Asks before the bill is cleared.
Confirmation {
    id: dialog

    property ContentView view

    confirmText: qsTr("Clear")
    title: qsTr("Clear this bill?")
    visible: dialog.view?.showClear ?? false
    onClosed: dialog.view.showClear = false
    onConfirmed: dialog.view.clear()
}
