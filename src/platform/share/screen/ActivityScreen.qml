import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls
import Vexilo.Share

// The share sheet: the destinations, and in their place the page of the chosen one, where it has one.
Sheet {
    id: sheet

    readonly property Activity chosen: sheet.controller?.chosen ?? null
    property UIActivityViewController controller

    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    title: qsTr("Share")
    width: parent ? Math.min(parent.width, Theme.columnWidth + 2 * Theme.margin) : 0
    onAboutToHide: sheet.controller?.close()
    onVisibleChanged: if (sheet.visible) page.focusFirstActivity()

    Connections {
        function onStateChanged() {
            if (sheet.controller.state === UIActivityViewController.Finished)
                sheet.close();
        }

        target: sheet.controller
    }

    ActivityPage {
        id: page

        anchors.fill: parent
        controller: sheet.controller
        focus: !chosenPage.active
        visible: !chosenPage.active
        onCancelled: sheet.close()
        onVisibleChanged: if (visible && sheet.opened) page.forceActiveFocus(Qt.TabFocusReason)
    }

    Loader {
        id: chosenPage

        active: (sheet.chosen?.page ?? "") !== ""
        anchors.fill: parent
        focus: active
        source: sheet.chosen?.page ?? ""
        onLoaded: (item as QrCodePage).show(sheet.controller)
    }

    Loader {
        active: (sheet.controller?.failure ?? "") !== ""
        source: "ShareFailedDialog.qml"
        onLoaded: (item as ShareFailedDialog).controller = sheet.controller
    }
}
