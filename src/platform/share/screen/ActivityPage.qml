pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.Share

// What is shared, and the destinations that it can be shared with. Arrows go up and down through all
// that Tab goes through.
FocusScope {
    id: page

    required property UIActivityViewController controller

    signal cancelled

    function focusFirstActivity() {
        cancel.nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason);
    }

    function step(forward: bool) {
        page.Window.activeFocusItem.nextItemInFocusChain(forward).forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onDownPressed: page.step(true)
    Keys.onUpPressed: page.step(false)

    SheetHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        title: qsTr("Share")
        titleIsWhole: true

        PushButton {
            id: cancel

            Layout.rightMargin: 15 - Theme.margin
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
                onChosen: activity => page.controller.choose(activity)
            }
        }
    }
}
