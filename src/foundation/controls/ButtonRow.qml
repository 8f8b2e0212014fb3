import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// A row of a card that is a button as a whole.
ButtonBase {
    id: row

    Layout.fillWidth: true
    bottomPadding: Theme.lineSpace
    font.pixelSize: Theme.fontSize1
    implicitHeight: Math.max(Theme.rowHeight + Theme.lineSpace, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Theme.rowPadding
    radius: Theme.cardRadius - 4
    rightPadding: Theme.rowPadding
    topPadding: Theme.lineSpace

    background: Item {
        ControlFeedback {
            anchors.margins: 3
            down: row.down
            hovered: row.hovered
            radius: row.radius
        }

        FocusRing {
            anchors.margins: 3
            focused: row.activeFocus
            radius: row.radius
            reason: row.focusReason
        }
    }
    contentItem: BodyText {
        color: row.contentColor
        font: row.font
        text: row.text
        wrapMode: Text.Wrap
    }
}
