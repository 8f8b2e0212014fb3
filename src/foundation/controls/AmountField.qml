import QtQuick
import Vexilo.Controls

// A field for an amount of money.
FieldBase {
    id: field

    // Copy was asked for while the user has selected nothing in the field.
    signal copyRequested

    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy) && (field.selectedText === "" || field.selectedByEntering);
        if (event.accepted)
            field.copyRequested();
        else if (event.matches(StandardKey.SelectAll))
            field.selectedByEntering = false;
    }
    font.bold: true
    font.pixelSize: Theme.fontSize3 + 2
    horizontalAlignment: TextInput.AlignRight
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    leftPadding: Theme.lineSpace * 2
    radius: Math.max(30, height / 2)
    rightPadding: Theme.lineSpace * 2
}
