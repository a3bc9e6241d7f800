// A tap as it was measured, what became of it, and the limit that would have accepted it.
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
    Accessible.role: Accessible.ListItem
    Accessible.name: row.outcome + ", " + row.detail
    Accessible.ignored: !visible
    Divider { visible: root.index > 0 }
    SettingRow {
        id: content
        symbol: root.row.accepted ? "checkmark.circle.fill" : "exclamationmark.circle"
        symbolColor: root.row.accepted ? Theme.good : Theme.warning
        title: root.row.outcome
        caption: root.row.detail
        wordsIgnored: true
        PushButton {
            text: root.row.suggestion
            help: root.row.suggestionHelp
            visible: text.length > 0
            onClicked: root.pane.applySuggestion(root.row.id)
        }
    }
}
