// Applications that run now, or all that are installed, to choose some of them for a list.
import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velotap

Sheet {
    id: root
    property var pane
    readonly property var s: pane.runningState

    title: s.title
    text: s.message
    firstFocus: search
    onFindWanted: search.forceActiveFocus(Qt.ShortcutFocusReason)
    SearchField {
        id: search
        hint: root.s.hint
        clearText: root.s.clear
        query: root.s.query
        onEdited: query => root.pane.setRunningQuery(query)
    }
    Flow {
        width: parent.width
        spacing: Theme.snug
        PushButton {
            text: root.s.selectVisible
            enabled: root.s.canSelectVisible
            onClicked: root.pane.selectVisible()
        }
        PushButton {
            text: root.s.clearSelection
            enabled: root.s.canAdd
            onClicked: root.pane.clearSelection()
        }
        PushButton {
            text: root.s.refresh
            symbol: "arrow.clockwise"
            onClicked: root.pane.refreshRunning()
        }
        PushButton {
            text: root.s.file
            symbol: "folder"
            visible: text.length > 0
            onClicked: { root.close(); root.pane.chooseFile() }
        }
    }
    Caption { text: root.s.count; width: parent.width }
    Card {
        EmptyState { visible: root.pane.running.count === 0; title: root.s.none }
        // The list scrolls by itself, so that however long it is what adds stays in sight.
        Flickable {
            id: list
            readonly property Item focusItem: Window.activeFocusItem
            width: parent.width
            height: Math.min(contentHeight, Math.round(230 * Theme.scale))
            contentHeight: rows.height
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            T.ScrollBar.vertical: VScrollBar {}
            onFocusItemChanged: {
                let p = focusItem
                while (p && p !== rows) p = p.parent
                if (!p) return
                const y = focusItem.mapToItem(rows, 0, 0).y
                contentY = Math.max(y + focusItem.height - height, Math.min(contentY, y))
            }
            Rows {
                id: rows
                view: list
                model: root.pane.running
                delegate: CheckRow {
                    readonly property var row: parent.row
                    divided: parent.index > 0
                    title: row.name
                    caption: row.identifier
                    iconName: row.icon
                    on: row.selected
                    onSwitched: root.pane.toggleRunning(row.id)
                }
            }
        }
    }
    buttons: [
        PushButton {
            kind: "primary"
            text: root.s.add
            enabled: root.s.canAdd
            onClicked: { root.pane.addRunning(); root.close() }
        },
        PushButton { text: root.s.cancel; onClicked: root.close() }
    ]
}
