import QtQuick
import Vexilo.Calculator
import Vexilo.Controls

// The three ways to change how the bill is split.
Card {
    id: card

    required property UserSettings settings

    SwitchRow {
        on: card.settings.tipFromEveryone
        text: qsTr("Everyone pays the tip")
        onSwitched: checked => card.settings.tipFromEveryone = checked
    }

    RowSeparator {
    }

    SwitchRow {
        on: card.settings.roundTip
        text: qsTr("Round up tip")
        onSwitched: checked => card.settings.roundTip = checked
    }

    RowSeparator {
    }

    SwitchRow {
        on: card.settings.roundShare
        text: qsTr("Round up share")
        onSwitched: checked => card.settings.roundShare = checked
    }
}
