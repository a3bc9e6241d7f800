// A rule: the application, and what can be done with it.
import QtQuick
import Velotap

Item {
    id: root
    required property var row
    required property int index
    property var pane
    property string list

    width: parent ? parent.width : 0
    implicitHeight: Math.max(icon.height, words.implicitHeight) + 2 * Theme.medium
    height: implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: row.name
    Accessible.ignored: !visible
    Accessible.description: row.help
    Divider { visible: root.index > 0 }
    AppIcon {
        id: icon
        x: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        icon: root.row.icon
        name: root.row.name
        opacity: root.row.missing.length > 0 ? 0.5 : 1
    }
    Column {
        id: words
        anchors { left: icon.right; leftMargin: Theme.medium; right: actions.left
                  rightMargin: Theme.snug; verticalCenter: parent.verticalCenter }
        spacing: Theme.tight
        Label { text: root.row.name; width: parent.width; Accessible.ignored: true }
        Caption {
            text: root.row.identifier
            width: parent.width
            visible: text.length > 0
            wrapMode: Text.WrapAnywhere
            Accessible.ignored: true
        }
        Caption {
            text: root.row.note
            width: parent.width
            visible: text.length > 0
            Accessible.ignored: true
        }
        Row {
            visible: root.row.missing.length > 0
            spacing: Theme.snug
            Caption {
                text: root.row.missing
                color: Theme.warning
                wrapMode: Text.NoWrap
                anchors.verticalCenter: parent.verticalCenter
                Accessible.ignored: true
            }
            PushButton {
                kind: "link"
                text: root.row.resolve
                visible: text.length > 0
                onClicked: root.pane.resolve(root.row.id)
            }
        }
    }
    Row {
        id: actions
        anchors { right: parent.right; rightMargin: Theme.snug; verticalCenter: parent.verticalCenter }
        IconButton {
            symbol: "folder"
            text: root.row.reveal
            visible: text.length > 0
            onClicked: root.pane.reveal(root.row.id)
        }
        IconButton {
            symbol: "doc.on.doc"
            text: root.row.copy
            onClicked: root.pane.copyIdentifier(root.row.id)
        }
        IconButton {
            symbol: "minus.circle"
            text: root.row.remove
            onClicked: root.pane.remove(root.list, root.row.id)
        }
    }
}
