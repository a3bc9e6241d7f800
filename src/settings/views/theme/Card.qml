// Rows that belong together.
import QtQuick
import Velotap

Rectangle {
    id: root
    default property alias content: column.data
    property int pad: 0

    width: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * pad
    color: Theme.card
    border.color: Theme.line
    border.width: Theme.hairline
    radius: Theme.cornerLarge
    Column {
        id: column
        x: root.pad
        y: root.pad
        width: root.width - 2 * root.pad
    }
}
