pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// What is shared, and the destinations that it can be shared with. Arrows go up and down through all
// that Tab goes through.
FocusScope {
    id: page

    // The chosen activity while it is performed here; null for none.
    readonly property Activity awaited: page.controller?.state === UIActivityViewController.Performing && page.controller.chosen.page === "" ? page.controller.chosen : null
    // What is covered by the page of an activity can be chosen from as soon as it is uncovered.
    readonly property bool choosable: page.controller?.state === UIActivityViewController.Choosing || !page.visible
    required property UIActivityViewController controller

    signal cancelled

    function focusFirstActivity() {
        cancel.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
    }

    function focusNext() {
        page.Window.activeFocusItem.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason);
    }

    function focusPrevious() {
        page.Window.activeFocusItem.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason);
    }

    Keys.onDownPressed: page.focusNext()
    Keys.onUpPressed: page.focusPrevious()

    SheetHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        title: qsTr("Share")
        titleIsWhole: true

        PushButton {
            id: cancel

            font.pixelSize: Theme.fontSize1
            text: qsTr("Cancel")
            onClicked: page.cancelled()
        }
    }

    Rectangle {
        anchors.bottom: form.top
        anchors.left: form.left
        anchors.right: form.right
        color: Theme.line
        height: 1
        visible: form.contentY > 0
    }

    FormScroller {
        id: form

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: -gutter
        anchors.right: parent.right
        anchors.rightMargin: -gutter
        anchors.top: header.bottom
        anchors.topMargin: Theme.lineSpace

        Card {
            Layout.fillWidth: true

            BodyText {
                Accessible.name: page.controller?.text ?? ""
                Accessible.role: Accessible.StaticText
                Layout.bottomMargin: Theme.rowPadding - 4
                Layout.fillWidth: true
                Layout.leftMargin: Theme.rowPadding
                Layout.rightMargin: Theme.rowPadding
                Layout.topMargin: Theme.rowPadding - 4
                color: Theme.softText
                font.pixelSize: Theme.smallFontSize
                maximumLineCount: 12
                text: page.controller?.text.trim() ?? ""
                wrapMode: Text.Wrap
            }
        }

        Repeater {
            model: page.controller?.groups ?? []

            ActivityCard {
                required property ActivityModel modelData

                activities: modelData
                awaited: page.awaited
                choosable: page.choosable
                onChosen: activity => page.controller.choose(activity)
            }
        }
    }
}
