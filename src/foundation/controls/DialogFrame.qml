import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Vexilo.Controls

// A modal dialog in the middle of the window: a title, an optional message, what the dialog itself
// adds, and buttons, below each other where a word of one would not fit beside the others. Escape
// closes it.
T.Dialog {
    id: dialog

    default property alias body: extra.data
    // The button that has the keyboard whenever the dialog opens.
    required property Item initialFocus
    property string message: ""
    property alias buttons: buttonRow.data

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    implicitWidth: Math.min(Theme.dialogWidth, (T.Overlay.overlay?.width ?? Theme.dialogWidth) - 2 * Theme.margin)
    modal: true
    padding: Theme.margin
    onAboutToShow: dialog.initialFocus.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.dim
    }
    background: Rectangle {
        border.color: Theme.line
        color: Theme.card
        radius: Theme.cardRadius
    }
    contentItem: ColumnLayout {
        LayoutMirroring.childrenInherit: true
        LayoutMirroring.enabled: Theme.rightToLeft
        spacing: Theme.lineSpace

        BodyText {
            Layout.fillWidth: true
            font.bold: true
            font.pixelSize: Theme.fontSize1
            horizontalAlignment: Text.AlignHCenter
            text: dialog.title
            wrapMode: Text.Wrap
        }

        BodyText {
            Accessible.name: dialog.message
            Accessible.role: Accessible.StaticText
            Layout.fillWidth: true
            color: Theme.softText
            font.pixelSize: Theme.smallFontSize
            horizontalAlignment: Text.AlignHCenter
            text: dialog.message
            visible: dialog.message !== ""
            wrapMode: Text.Wrap
        }

        ColumnLayout {
            id: extra

            Layout.fillWidth: true
            visible: children.length > 0
        }

        GridLayout {
            id: buttonRow

            readonly property int count: children.length
            // A row that was not laid out yet has no width, and would be laid out twice.
            readonly property bool cramped: buttonRow.width > 0 && buttonRow.count * (buttonRow.longestWord + Theme.lineSpace) - Theme.lineSpace > buttonRow.width
            readonly property real longestWord: Array.from(children).reduce((longest, button) => Math.max(longest, button.wordWidth), 0)

            Layout.fillWidth: true
            Layout.topMargin: Theme.lineSpace
            columnSpacing: Theme.lineSpace
            columns: buttonRow.cramped ? 1 : buttonRow.count
            rowSpacing: Theme.lineSpace
        }
    }
}
