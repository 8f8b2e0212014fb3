import QtQuick
import Vexilo.Controls

// A field for one line of text of any script. Its name is shown while it is empty.
FieldBase {
    id: field

    // Shows a text that was not typed. The cursor stays where it was, as far as the text reaches.
    function show(text: string) {
        if (field.text === text)
            return;
        const position = field.cursorPosition;
        field.text = text;
        field.cursorPosition = Math.min(position, field.text.length);
    }

    font.pixelSize: Theme.fontSize1
    leftPadding: Theme.lineSpace + 4
    rightPadding: Theme.lineSpace + 4

    BodyText {
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        color: Theme.softText
        font: field.font
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.ceil(font.pixelSize * 0.6)
        text: field.name
        visible: field.text === "" && field.preeditText === ""
    }
}
