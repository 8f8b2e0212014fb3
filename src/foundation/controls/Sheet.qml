import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A screen that slides over the dimmed window. It is closed by Escape, or by what its content offers.
T.Dialog {
    id: sheet

    default property alias body: content.data
    // How far below its place the sheet comes into sight: near enough to be read from the first
    // frame on.
    readonly property real rise: 120
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
        border.color: Theme.controlBorder
        color: Theme.page
        radius: sheet.overshoot
    }
    contentItem: FocusScope {
        id: content

        LayoutMirroring.childrenInherit: true
        LayoutMirroring.enabled: Theme.rightToLeft
        focus: true
    }
    enter: Transition {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.OutCubic
            from: sheet.parent.height - sheet.height + sheet.overshoot + sheet.rise
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
