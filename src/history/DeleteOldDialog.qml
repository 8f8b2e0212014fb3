import Vexilo.Controls
import Vexilo.History

// Asks before old bills are deleted.
Confirmation {
    id: dialog

    property HistoryView view

    confirmText: qsTr("Delete old bills")
    title: qsTr("Delete bills older than 6 months?")
    visible: dialog.view?.promptToDeleteOld ?? false
    onClosed: dialog.view.promptToDeleteOld = false
    onConfirmed: dialog.view.deleteOldBills()
}
