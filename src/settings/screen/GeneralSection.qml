import QtQuick
import Vexilo.Controls
import Vexilo.Settings

// What can be switched on and off.
FormSection {
    id: section

    required property SettingsView view

    header: qsTr("GENERAL")

    SwitchRow {
        on: section.view?.iCloud ?? false
        text: qsTr("Sync with iCloud")
        onSwitched: checked => section.view.iCloud = checked
    }

    RowSeparator {
    }

    SwitchRow {
        on: section.view?.showCurrency ?? false
        text: section.view?.currencyLabel ?? ""
        onSwitched: checked => section.view.showCurrency = checked
    }

    RowSeparator {
    }

    SwitchRow {
        on: section.view?.highlightSums ?? false
        text: qsTr("Highlight sums")
        onSwitched: checked => section.view.highlightSums = checked
    }
}
