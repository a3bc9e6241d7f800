// The scrolling body of a pane. It keeps what has the keyboard in view.
import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Velotap

Flickable {
    id: root
    default property alias content: column.data
    property alias spacing: column.spacing
    readonly property int side: Math.max(Theme.wide, (width - Theme.paneWidth) / 2)
    readonly property Item focusItem: Window.activeFocusItem

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * Theme.wide
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: VScrollBar {}
    onFocusItemChanged: {
        let p = focusItem
        while (p && p !== column) p = p.parent
        if (!p) return
        const y = focusItem.mapToItem(column, 0, 0).y + Theme.wide
        if (y - Theme.large < contentY) contentY = Math.max(0, y - Theme.large)
        else if (y + focusItem.height + Theme.large > contentY + height)
            contentY = Math.min(contentHeight - height, y + focusItem.height + Theme.large - height)
    }
    function toBottom() { contentY = Math.max(0, contentHeight - height) }
    Column {
        id: column
        x: root.side
        y: Theme.wide
        width: root.width - 2 * root.side
        spacing: Theme.wide
    }
}
