import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls
import Vexilo.Share

// The share sheet: the destinations, and in their place the page of the chosen one, where it has one.
Sheet {
    id: sheet

    readonly property Activity chosen: sheet.controller?.chosen ?? null
    property UIActivityViewController controller
    readonly property string pageOfChosen: sheet.chosen?.page ?? ""

    // The second press of a double click on what opened the sheet does not close it; nor does a
    // press beside it end what is performed.
    closePolicy: !doubleClick.running && sheet.controller?.state === UIActivityViewController.Choosing ? T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside : T.Popup.CloseOnEscape
    title: qsTr("Share")
    width: parent ? Math.min(parent.width, Theme.columnWidth + 2 * Theme.margin) : 0
    onAboutToHide: sheet.controller?.close()
    onAboutToShow: doubleClick.restart()
    onPageOfChosenChanged: chosenPage.setSource(sheet.pageOfChosen, {
        controller: sheet.controller
    })
    onVisibleChanged: if (sheet.visible) page.focusFirstActivity()

    Timer {
        id: doubleClick

        interval: Application.styleHints.mouseDoubleClickInterval
    }

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
        focus: sheet.pageOfChosen === ""
        visible: sheet.pageOfChosen === ""
        onCancelled: sheet.close()
        onVisibleChanged: if (visible && sheet.opened) page.forceActiveFocus(Qt.TabFocusReason)
    }

    Loader {
        id: chosenPage

        anchors.fill: parent
        focus: sheet.pageOfChosen !== ""
        onLoaded: (item as Item).forceActiveFocus(Qt.TabFocusReason)
    }

    Loader {
        active: (sheet.controller?.failure ?? "") !== ""
        source: "ShareFailedDialog.qml"
        onLoaded: (item as ShareFailedDialog).controller = sheet.controller
    }
}
