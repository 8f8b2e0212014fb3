import QtQuick
import Vexilo.Calculator

// The calculator's dialogs. Each is made when it is first needed, and then kept.
Item {
    id: dialogs

    required property ContentView view

    Loader {
        active: dialogs.view.showClear || status === Loader.Ready
        source: "ClearDialog.qml"
        onLoaded: (item as ClearDialog).view = dialogs.view
    }

    Loader {
        active: dialogs.view.showCopied || status === Loader.Ready
        source: "CopiedDialog.qml"
        onLoaded: (item as CopiedDialog).view = dialogs.view
    }

    Loader {
        active: dialogs.view.saveDialog || status === Loader.Ready
        source: "SaveDialog.qml"
        onLoaded: (item as SaveDialog).view = dialogs.view
    }

    Loader {
        active: dialogs.view.showSaveFailed || status === Loader.Ready
        source: "SaveFailedDialog.qml"
        onLoaded: (item as SaveFailedDialog).view = dialogs.view
    }
}
