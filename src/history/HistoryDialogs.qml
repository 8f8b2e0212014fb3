import QtQuick
import Vexilo.History

// The dialogs of the saved bills. Each is made when it is first needed, and then kept.
Item {
    id: dialogs

    required property HistoryView view

    Loader {
        active: (dialogs.view?.showRename ?? false) || status === Loader.Ready
        source: "RenameDialog.qml"
        onLoaded: (item as RenameDialog).view = dialogs.view
    }

    Loader {
        active: (dialogs.view?.showUseThisBill ?? false) || status === Loader.Ready
        source: "UseDialog.qml"
        onLoaded: (item as UseDialog).view = dialogs.view
    }

    Loader {
        active: (dialogs.view?.promptToDeleteOld ?? false) || status === Loader.Ready
        source: "DeleteOldDialog.qml"
        onLoaded: (item as DeleteOldDialog).view = dialogs.view
    }

    Loader {
        active: (dialogs.view?.promptToDelete ?? false) || status === Loader.Ready
        source: "DeleteAllDialog.qml"
        onLoaded: (item as DeleteAllDialog).view = dialogs.view
    }
}
