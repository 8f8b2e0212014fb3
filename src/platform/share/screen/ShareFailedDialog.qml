import Vexilo.Controls
import Vexilo.Share

// Says why the chosen activity failed.
Alert {
    id: dialog

    property UIActivityViewController controller

    message: dialog.controller?.failure ?? ""
    title: qsTr("The text could not be shared.")
    visible: dialog.controller !== null
    onClosed: dialog.controller.close()
}
