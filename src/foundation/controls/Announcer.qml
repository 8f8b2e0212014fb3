import QtQuick
import Vexilo.Controls

// Has assistive software speak of texts that changed where nobody has the keyboard. It is seen by
// nobody else. What appears as a notification is spoken; a changed name is not. It goes as soon as it
// is out of date: who reads the window item by item would meet it beside what is true now.
Item {
    id: announcer

    property alias held: settled.held
    property string message
    property alias texts: settled.texts

    function announce(message: string) {
        announcer.message = message;
        announcer.visible = true;
    }

    Accessible.name: announcer.message
    Accessible.role: Accessible.Notification
    // Of no size it would count as hidden.
    height: 1
    visible: false
    width: 1

    SettledTexts {
        id: settled

        onHeldChanged: announcer.visible = false
        onSettled: changes => announcer.announce(changes)
        onTextsChanged: announcer.visible = false
    }
}
