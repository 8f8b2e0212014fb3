import QtQuick
import Vexilo.Controls
import Vexilo.Share

// An application's own page of its own activity.
FocusScope {
    id: page

    required property UIActivityViewController controller

    PushButton {
        focus: true
        text: "Back from " + (page.controller?.chosen?.title ?? "")
        onClicked: page.controller.goBack()
    }
}
