import QtQuick
import QtQuick.Layouts
import Vexilo.Calculator
import Vexilo.Controls

// What everybody came for: the total, the tip and each share.
GradientPanel {
    id: panel

    // One row that needs two lines gives all of them two.
    readonly property bool stacked: total.cramped || tip.cramped || share.cramped
    readonly property alias share: share.spoken
    readonly property alias tip: tip.spoken
    readonly property alias total: total.spoken
    required property ContentView view

    bottomColor: panel.view.linearColor2
    implicitHeight: column.implicitHeight + 2 * (Theme.lineSpace + 6)
    outlineColor: !panel.view.userSettings.highlightSums ? Theme.line : Theme.highContrast ? Theme.controlBorder : panel.view.linearColor2
    radius: 20
    topColor: panel.view.linearColor1

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.leftMargin: Theme.margin
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 0

        ResultRow {
            id: total

            Layout.fillWidth: true
            amount: panel.view.totalText
            amountSize: Theme.fontSize3 + 2
            color: panel.view.foregroundColor
            iconName: "creditcard"
            label: qsTr("TOTAL")
            labelSize: Theme.fontSize3
            stacked: panel.stacked
        }

        ResultRow {
            id: tip

            Layout.fillWidth: true
            amount: panel.view.tipText
            color: panel.view.foregroundColor
            iconName: "gift.fill"
            label: panel.view.tipLabel
            roundedUp: panel.view.userSettings.roundTip
            stacked: panel.stacked
        }

        ResultRow {
            id: share

            Layout.fillWidth: true
            amount: panel.view.shareText
            color: panel.view.foregroundColor
            iconName: "person.fill"
            label: qsTr("Share per person")
            roundedUp: panel.view.userSettings.roundShare
            stacked: panel.stacked
        }

        Notice {
            Layout.alignment: Qt.AlignRight
            Layout.bottomMargin: Theme.lineSpace
            color: panel.view.foregroundColor
            text: panel.view.resultsNotice
        }
    }
}
