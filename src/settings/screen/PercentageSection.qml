import QtQuick
import QtQuick.Layouts
import Vexilo.Controls

// How much tip a service is worth: a slider, and the whole percentage that it stands for.
FormSection {
    id: section

    property bool heedsWheel: true
    required property string name
    required property string percentage
    required property real place

    signal placed(real value)

    RowLayout {
        Layout.bottomMargin: (Theme.lineSpace + 4) / 2
        Layout.leftMargin: Theme.rowPadding
        Layout.rightMargin: Theme.rowPadding
        Layout.topMargin: Layout.bottomMargin
        spacing: Theme.margin

        Slider {
            Layout.fillWidth: true
            accessibleName: section.name
            from: 1
            heedsWheel: section.heedsWheel
            place: section.place
            to: 100
            onPlaced: value => section.placed(value)
        }

        FigureText {
            Accessible.name: text
            Accessible.role: Accessible.StaticText
            Layout.minimumWidth: widest.implicitWidth
            color: Theme.text
            font.bold: true
            font.pixelSize: Theme.fontSize2
            mirrored: Theme.rightToLeft
            text: section.percentage

            // The slider does not change its length with the number beside it.
            FigureText {
                id: widest

                font: parent.font
                text: "100"
                visible: false
            }
        }
    }
}
