pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// What every text field of the program shares: its ground, its states, and what assistive software is
// told. Its whole text is selected when it is entered, so that typing replaces it.
T.TextField {
    id: field

    // Whether the keyboard has come to the field and not gone elsewhere since. A window that is left
    // for another one takes it along, and brings it back.
    property bool entered: false
    property bool invalid: false
    required property string name
    // Said to assistive software beside the name.
    property string notice: ""
    property real radius: Theme.controlRadius
    // Whether the whole text is selected because the field was entered, and not by the user.
    property bool selectedByEntering: false

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
    onActiveFocusChanged: {
        if (activeFocus && !entered) {
            selectAll();
            selectedByEntering = true;
        }
        entered = activeFocus || (entered && !Window.active);
    }
    onSelectedTextChanged: selectedByEntering = false
    // Assistive software may have moved the keyboard elsewhere meanwhile.
    Window.onActiveChanged: if (Window.active) entered = activeFocus

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
