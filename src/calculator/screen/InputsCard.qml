import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// What the user gives: the bill, the people and how good the service was.
Card {
    id: card

    readonly property alias people: peopleRow.spoken
    required property ContentView view

    BillRow {
        Layout.fillWidth: true
        focus: true
        view: card.view
    }

    RowSeparator {
    }

    PeopleRow {
        id: peopleRow

        Layout.fillWidth: true
        view: card.view
    }

    RowSeparator {
    }

    ServiceRow {
        Layout.fillWidth: true
        view: card.view
    }
}
