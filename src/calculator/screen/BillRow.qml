import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// The bill field. Its text goes to the view's state at every change and comes back only when the
// field is left, so that nothing rewrites a text that is being typed.
FocusScope {
    id: row

    required property ContentView view
    // What the label and the symbol leave for a long amount.
    readonly property real roomForField: grid.width - label.implicitWidth - symbol.implicitWidth - 3 * Theme.lineSpace
    // Whether the label stands above the field, for want of room beside it.
    readonly property bool stacked: label.implicitWidth + field.implicitWidth + (symbol.visible ? symbol.implicitWidth + 2 * Theme.lineSpace : Theme.lineSpace) > grid.width

    implicitHeight: grid.implicitHeight + 2 * (Theme.lineSpace + 3)

    Connections {
        function onBillTextChanged() {
            field.text = row.view.billText;
        }

        function onIsTextFieldFocusedChanged() {
            if (row.view.isTextFieldFocused === field.entered)
                return;
            if (row.view.isTextFieldFocused)
                field.forceActiveFocus(Qt.OtherFocusReason);
            else
                field.focus = false;
        }

        target: row.view
    }

    ColumnLayout {
        id: grid

        anchors.left: parent.left
        anchors.leftMargin: Theme.rowPadding
        anchors.right: parent.right
        anchors.rightMargin: Theme.rowPadding - 5
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        GridLayout {
            columnSpacing: Theme.lineSpace
            columns: row.stacked ? 2 : 3
            rowSpacing: 4

            BodyText {
                id: label

                Layout.columnSpan: row.stacked ? 2 : 1
                Layout.fillWidth: true
                Layout.minimumWidth: row.stacked ? 0 : Math.ceil(implicitWidth)
                font.pixelSize: Theme.fontSize3 + 2
                text: qsTr("Bill to Split")
                wrapMode: row.stacked ? Text.Wrap : Text.NoWrap
            }

            BodyText {
                id: symbol

                color: Theme.softText
                font.bold: true
                font.pixelSize: Theme.fontSize3 + 4
                text: row.view.currencySymbol
                visible: row.view.userSettings.showCurrency
            }

            AmountField {
                id: field

                Component.onCompleted: text = row.view.billText
                Layout.columnSpan: row.stacked && !symbol.visible ? 2 : 1
                Layout.fillWidth: row.stacked
                Layout.preferredWidth: Math.max(implicitWidth, Math.min(row.roomForField, contentWidth + 5 * Theme.lineSpace))
                focus: true
                invalid: row.view.billNotice !== ""
                name: qsTr("Bill to Split")
                notice: row.view.billNotice
                onCopyRequested: row.view.copy()
                onEnteredChanged: {
                    row.view.isTextFieldFocused = entered;
                    if (!entered)
                        row.view.billEditingFinished();
                }
                onTextChanged: row.view.billEdited(text)
            }
        }

        Notice {
            Layout.alignment: Qt.AlignRight
            text: row.view.billNotice
        }
    }
}
