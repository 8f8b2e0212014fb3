import QtQuick
import Vexilo.Controls

// Where the calculator stands that is higher than its window.
AppScrollBar {
    id: bar

    property Flickable scroller

    orientation: Qt.Vertical
    position: bar.scroller?.visibleArea.yPosition ?? 0
    size: bar.scroller?.visibleArea.heightRatio ?? 1
    onPositionChanged: if (bar.pressed) bar.scroller.contentY = bar.position * bar.scroller.contentHeight
}
