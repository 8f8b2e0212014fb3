import QtQuick
import QtQuick.Layouts
import Vexilo.Controls
import Vexilo.History

// Every stored field of a bill, in three groups, and when it was saved.
ColumnLayout {
    id: lines

    required property DetailView detail

    spacing: Theme.lineSpace + 2

    Card {
        Layout.fillWidth: true
        verticalPadding: Theme.lineSpace / 2

        DetailLine {
            emphasised: true
            label: qsTr("Bill")
            value: lines.detail?.bill ?? ""
        }

        DetailLine {
            label: qsTr("People")
            value: lines.detail?.people ?? ""
        }

        DetailLine {
            label: qsTr("Service")
            value: lines.detail?.service ?? ""
        }

        DetailLine {
            label: qsTr("Total")
            value: lines.detail?.total ?? ""
        }
    }

    Card {
        Layout.fillWidth: true
        verticalPadding: Theme.lineSpace / 2

        DetailLine {
            label: qsTr("Share per person")
            value: lines.detail?.share ?? ""
        }

        DetailLine {
            label: qsTr("Tip")
            value: lines.detail?.tip ?? ""
        }
    }

    Card {
        Layout.fillWidth: true
        verticalPadding: Theme.lineSpace / 2

        DetailLine {
            label: qsTr("Everyone pays the tip")
            value: lines.detail?.everyone ?? ""
        }

        DetailLine {
            label: qsTr("Tip is rounded up")
            value: lines.detail?.roundtip ?? ""
        }

        DetailLine {
            label: qsTr("Share is rounded up")
            value: lines.detail?.roundshare ?? ""
        }
    }

    BodyText {
        Accessible.name: text
        Accessible.role: Accessible.StaticText
        Layout.bottomMargin: Theme.lineSpace
        Layout.fillWidth: true
        Layout.leftMargin: Theme.rowPadding
        Layout.rightMargin: Theme.rowPadding
        color: Theme.softText
        font.italic: true
        font.pixelSize: Theme.smallFontSize
        text: lines.detail?.savedOn ?? ""
        wrapMode: Text.Wrap
    }
}
