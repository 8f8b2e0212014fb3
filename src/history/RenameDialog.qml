import Vexilo.Controls
import Vexilo.History

// Asks for the chosen bill's new description.
TextPrompt {
    id: dialog

    property HistoryView view

    confirmText: qsTr("Rename")
    message: qsTr("Leave blank to use 'Bill'")
    notice: dialog.view?.descriptionNotice ?? ""
    placeholder: qsTr("Description")
    title: qsTr("Rename")
    value: dialog.view?.billDescription ?? ""
    visible: dialog.view?.showRename ?? false
    onClosed: dialog.view.showRename = false
    onConfirmed: dialog.view.rename()
    onEdited: text => dialog.view.billDescription = text
}
