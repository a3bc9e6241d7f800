// A gesture: its switch, its explanation, and why it cannot act.
import QtQuick
import Velotap

Item {
    id: root
    required property var row
    required property int index
    property var pane

    width: parent ? parent.width : 0
    implicitHeight: content.implicitHeight
    height: implicitHeight
    Divider { visible: root.index > 0 }
    SettingRow {
        id: content
        title: root.row.title
        wordsIgnored: true
        opacity: 1
        MouseArea {
            parent: content
            anchors.fill: parent
            z: -1
            onClicked: root.pane.setTrigger(root.row.id, !root.row.on)
        }
        trailing: [
            IconButton {
                anchors.verticalCenter: parent ? parent.verticalCenter : undefined
                symbol: root.row.explainSymbol
                text: root.row.explainName
                color: root.row.expanded ? Theme.accent : Theme.textSecondary
                expandable: true
                expanded: root.row.expanded
                onClicked: root.pane.explain(root.row.id)
            },
            Toggle {
                anchors.verticalCenter: parent ? parent.verticalCenter : undefined
                on: root.row.on
                name: root.row.title
                // Why it cannot act is heard with the switch, not only when its note is come upon.
                help: [root.row.note, root.row.detail].filter(words => words.length > 0).join(" ")
                onSwitched: wish => root.pane.setTrigger(root.row.id, wish)
            }
        ]
        Column {
            width: parent.width
            spacing: Theme.snug
            visible: root.row.expanded
            GesturePicture {
                fingers: root.row.fingers
                kind: root.row.kind
                device: root.row.device
                name: root.row.title
            }
            Caption { text: root.row.detail; width: parent.width }
            PushButton {
                width: Math.min(implicitWidth, parent.width)
                text: root.row.reset
                symbol: "arrow.counterclockwise"
                visible: text.length > 0
                onClicked: root.pane.resetSelected()
            }
        }
        Note {
            visible: root.row.note.length > 0
            text: root.row.note
            action: root.row.noteAction
            onActed: root.pane.actOnNote(root.row.id)
        }
    }
}
