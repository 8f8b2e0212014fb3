pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vexilo.Controls

// A field for one line of text of any script. Its whole text is selected when it is entered.
T.TextField {
    id: field

    property bool invalid: false
    // What the field asks for: shown while it is empty, and said to assistive software.
    required property string name
    property string notice: ""

    // Shows a text that was not typed. The cursor stays where it was, as far as the text reaches.
    function show(text: string) {
        if (field.text === text)
            return;
        const position = field.cursorPosition;
        field.text = text;
        field.cursorPosition = Math.min(position, field.text.length);
    }

    Accessible.description: field.notice
    Accessible.name: field.name
    Accessible.role: Accessible.EditableText
    bottomPadding: Theme.lineSpace
    color: Theme.text
    font.pixelSize: Theme.fontSize1
    implicitHeight: Math.max(Theme.rowHeight, contentHeight + topPadding + bottomPadding)
    implicitWidth: 190
    leftPadding: Theme.lineSpace + 4
    rightPadding: Theme.lineSpace + 4
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
        radius: Theme.controlRadius
    }

    BodyText {
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        color: Theme.softText
        font: field.font
        text: field.name
        visible: field.text === "" && field.preeditText === ""
    }
}
