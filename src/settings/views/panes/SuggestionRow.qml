// An application that is better left alone.
import QtQuick
import Velotap

Item {
    id: root
    required property var row
    required property int index
    property var pane

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.rowHeight, words.implicitHeight + 2 * Theme.snug)
    height: implicitHeight
    Divider { visible: root.index > 0 }
    AppIcon {
        id: icon
        x: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        icon: root.row.icon
        name: root.row.name
        size: Theme.large
    }
    Column {
        id: words
        anchors { left: icon.right; leftMargin: Theme.medium; right: add.left
                  rightMargin: Theme.snug; verticalCenter: parent.verticalCenter }
        spacing: Theme.tight
        Label { text: root.row.name; width: parent.width }
        Caption {
            text: root.row.identifier
            width: parent.width
            wrapMode: Text.WrapAnywhere
            visible: text.length > 0
        }
    }
    IconButton {
        id: add
        anchors { right: parent.right; rightMargin: Theme.snug; verticalCenter: parent.verticalCenter }
        symbol: "plus.circle"
        color: Theme.accent
        text: root.row.add
        onClicked: root.pane.addSuggestion(root.row.id)
    }
}
