// What stands where a list would be, and what to do about it.
import QtQuick
import Velotap

Item {
    id: root
    property string symbol
    property string title
    property string text
    property string action
    signal acted()

    width: parent ? parent.width : 0
    implicitHeight: column.implicitHeight + 2 * Theme.large
    height: implicitHeight
    Column {
        id: column
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.gap, 400)
        spacing: Theme.snug
        Glyph {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: root.symbol
            size: Theme.glyphHero
            visible: root.symbol.length > 0
        }
        Label {
            kind: "strong"
            text: root.title
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
        }
        Caption {
            text: root.text
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            visible: root.text.length > 0
        }
        PushButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.action
            visible: root.action.length > 0
            onClicked: root.acted()
        }
    }
}
