import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A screen that slides over the dimmed window and is closed by Done or Escape.
T.Dialog {
    id: sheet

    default property alias body: content.data
    // The sheet reaches below the window's edge by its corners, which are round only at the top.
    readonly property real overshoot: Theme.cardRadius + 6

    bottomPadding: overshoot
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    height: parent ? parent.height - Theme.margin - Theme.lineSpace + overshoot : 0
    leftPadding: Theme.margin
    modal: true
    parent: T.Overlay.overlay
    rightPadding: Theme.margin
    topPadding: Theme.lineSpace
    width: parent ? Math.min(parent.width, Theme.sheetWidth) : 0
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? parent.height - height + overshoot : 0

    T.Overlay.modal: Rectangle {
        color: Theme.dim
    }
    background: Rectangle {
        color: Theme.page
        radius: sheet.overshoot
    }
    contentItem: ColumnLayout {
        LayoutMirroring.childrenInherit: true
        LayoutMirroring.enabled: Theme.rightToLeft
        spacing: Theme.lineSpace

        RowLayout {
            Layout.fillWidth: true

            BodyText {
                Layout.fillWidth: true
                font.bold: true
                font.pixelSize: Theme.fontSize3 + 4
                text: sheet.title
            }

            PushButton {
                font.bold: true
                font.pixelSize: Theme.fontSize1
                text: qsTr("Done")
                onClicked: sheet.close()
            }
        }

        Item {
            id: content

            Layout.fillHeight: true
            Layout.fillWidth: true
        }
    }
    enter: Transition {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.OutCubic
            from: sheet.parent.height
            property: "y"
            to: sheet.parent.height - sheet.height + sheet.overshoot
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.InCubic
            property: "y"
            to: sheet.parent.height
        }
    }
}
