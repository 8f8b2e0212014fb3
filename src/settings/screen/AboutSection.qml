import QtQuick
import Vexilo.Controls
import Vexilo.Settings

// Whose program it is, which one, and where it is explained.
FormSection {
    id: section

    required property SettingsView view

    header: qsTr("ABOUT")

    ValueRow {
        label: section.view?.copyright ?? ""
    }

    RowSeparator {
    }

    ValueRow {
        label: qsTr("Version")
        value: section.view?.version ?? ""
    }

    RowSeparator {
    }

    ButtonRow {
        text: qsTr("Help")
        onClicked: section.view.help()
    }
}
