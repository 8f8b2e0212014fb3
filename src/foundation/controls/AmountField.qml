pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A field for an amount of money. Its whole text is selected when it is entered, so that typing
// replaces the old amount.
T.TextField {
    id: field

    property bool invalid: false
    required property string name
    // Said to assistive software beside the name.
    property string notice: ""

    // Copy was asked for while nothing is selected in the field.
    signal copyRequested

    Accessible.description: field.notice
    Accessible.name: field.name
    Accessible.role: Accessible.EditableText
    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy) && field.selectedText === "";
        if (event.accepted)
            field.copyRequested();
    }
    bottomPadding: Theme.lineSpace
    color: Theme.text
    font.bold: true
    font.pixelSize: Theme.fontSize3 + 2
    horizontalAlignment: TextInput.AlignRight
    implicitHeight: contentHeight + topPadding + bottomPadding
    implicitWidth: 190
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    leftPadding: Theme.lineSpace * 2
    rightPadding: Theme.lineSpace * 2
    selectByMouse: true
    selectedTextColor: "white"
    selectionColor: Theme.on
    topPadding: Theme.lineSpace
    verticalAlignment: TextInput.AlignVCenter
    onActiveFocusChanged: if (activeFocus) selectAll()

    // A steady cursor: one that blinks would redraw the window all day long.
    cursorDelegate: Rectangle {
        color: Theme.focus
        visible: field.cursorVisible
        width: 2
    }
    background: Rectangle {
        border.color: field.invalid ? Theme.invalid : field.activeFocus ? Theme.focus : Theme.line
        border.width: field.invalid ? 3 : field.activeFocus ? 2 : 1
        color: Theme.controlFill
        radius: 30
    }
}
