import Vexilo.Controls
import Vexilo.History

// Asks before every bill is deleted.
Confirmation {
    id: dialog

    property HistoryView view

    confirmText: qsTr("Delete ALL bills")
    title: dialog.view?.areYouSure ?? ""
    visible: dialog.view?.promptToDelete ?? false
    onClosed: dialog.view.promptToDelete = false
    onConfirmed: dialog.view.deleteAllBills()
}
