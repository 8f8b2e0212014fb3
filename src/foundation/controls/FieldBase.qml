pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// What every text field of the program shares: its ground, its states, and what assistive software is
// told. Its whole text is selected when it is entered, so that typing replaces it.
T.TextField {
    id: field

    property bool invalid: false
    required property string name
    // Said to assistive software beside the name.
    property string notice: ""
    property real radius: Theme.controlRadius

    Accessible.description: field.notice
    Accessible.name: field.name
    Accessible.role: Accessible.EditableText
    bottomPadding: Theme.lineSpace
    color: Theme.text
    implicitHeight: Math.max(Theme.rowHeight, contentHeight + topPadding + bottomPadding)
    implicitWidth: 190
    selectByMouse: true
    selectedTextColor: Theme.onText
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
        border.color: field.invalid ? Theme.invalid : field.activeFocus ? Theme.focus : Theme.controlEdge
        border.width: field.invalid ? 3 : field.activeFocus ? 2 : 1
        color: Theme.controlFill
        radius: field.radius
    }
}
