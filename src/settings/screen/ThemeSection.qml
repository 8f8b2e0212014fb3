import QtQuick
import Vexilo.Controls
import Vexilo.Settings

// Whose colours the window has.
FormSection {
    id: section

    required property SettingsView view

    header: qsTr("THEME")

    RadioGroup {
        choices: [
            RadioChoice {
                text: qsTr("System")
                value: 0
            },
            RadioChoice {
                text: qsTr("Dark")
                value: 2
            },
            RadioChoice {
                text: qsTr("Light")
                value: 1
            }
        ]
        currentValue: section.view?.theme ?? -1
        name: qsTr("Theme")
        onChosen: value => section.view.theme = value
    }
}
