import QtQuick
import Velotap

Item {
    width: parent ? parent.width : 0
    height: Theme.hairline
    Rectangle {
        anchors { fill: parent; leftMargin: Theme.gap; rightMargin: Theme.gap }
        color: Theme.hair
    }
}
