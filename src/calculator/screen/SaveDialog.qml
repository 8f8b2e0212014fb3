import Vexilo.Calculator
import Vexilo.Controls

// Asks under which description the bill is to be saved.
TextPrompt {
    id: dialog

    property ContentView view

    confirmText: qsTr("Save")
    message: qsTr("Leave blank to use 'Bill'")
    notice: dialog.view?.descriptionNotice ?? ""
    placeholder: qsTr("Description")
    title: qsTr("Save bill")
    value: dialog.view?.billDescription ?? ""
    visible: dialog.view?.saveDialog ?? false
    onClosed: dialog.view.saveDialog = false
    onConfirmed: dialog.view.saveThis()
    onEdited: text => dialog.view.billDescription = text
}
