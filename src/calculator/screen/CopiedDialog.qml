import Vexilo.Calculator
import Vexilo.Controls

// Says that the summary is on the clipboard.
Alert {
    id: dialog

    property ContentView view

    title: qsTr("The information has been copied to the clipboard for pasting into other apps.")
    visible: dialog.view?.showCopied ?? false
    onClosed: dialog.view.showCopied = false
}
