import Vexilo.Controls
import Vexilo.History

// Asks before the bill on the calculator is replaced.
Confirmation {
    id: dialog

    property HistoryView view

    confirmText: qsTr("Use this bill")
    destructive: false
    title: qsTr("Populate main screen with this bill's details?")
    visible: dialog.view?.showUseThisBill ?? false
    onClosed: dialog.view.showUseThisBill = false
    onConfirmed: dialog.view.useThisBill()
}
