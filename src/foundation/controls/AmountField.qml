import QtQuick
import Vexilo.Controls

// A field for an amount of money.
FieldBase {
    id: field

    // Copy was asked for while nothing is selected in the field.
    signal copyRequested

    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Copy) && field.selectedText === "";
        if (event.accepted)
            field.copyRequested();
    }
    font.bold: true
    font.pixelSize: Theme.fontSize3 + 2
    horizontalAlignment: TextInput.AlignRight
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    leftPadding: Theme.lineSpace * 2
    radius: Math.max(30, height / 2)
    rightPadding: Theme.lineSpace * 2
}
