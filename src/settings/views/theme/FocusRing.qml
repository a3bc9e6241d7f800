// Where the keyboard is.
import QtQuick
import Velotap

Rectangle {
    property int gap: 3
    anchors.fill: parent
    anchors.margins: -gap
    color: Theme.clear
    border.color: Theme.accent
    border.width: 2
    radius: Theme.corner + gap
}
