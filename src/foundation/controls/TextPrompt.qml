import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// Asks for one line of text. The state behind the dialog has the text; what is typed is offered to it
// with edited(), and the field shows what it made of that.
DialogFrame {
    id: prompt

    required property string confirmText
    property string notice: ""
    required property string placeholder
    required property string value

    signal confirmed
    signal edited(text: string)

    // The field shows what the state has also where that did not change: what was typed was refused.
    function offer() {
        prompt.edited(field.text);
        field.show(prompt.value);
    }

    initialFocus: field
    buttons: [
        DialogButton {
            text: qsTr("Cancel")
            onClicked: prompt.reject()
        },
        DialogButton {
            preferred: true
            text: prompt.confirmText
            onClicked: prompt.accept()
        }
    ]
    onAboutToShow: field.show(prompt.value)
    onAccepted: confirmed()
    onValueChanged: field.show(prompt.value)

    LineField {
        id: field

        Layout.fillWidth: true
        invalid: prompt.notice !== ""
        name: prompt.placeholder
        notice: prompt.notice
        onAccepted: prompt.accept()
        onTextChanged: prompt.offer()
    }

    Notice {
        Layout.alignment: Qt.AlignHCenter
        text: prompt.notice
    }
}
