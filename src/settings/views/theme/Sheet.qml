// A panel inside the window that has to be answered or closed before anything else.
import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velotap

T.Popup {
    id: root
    property string title
    property string text
    property int preferredWidth: Theme.sheetWidth
    property Item firstFocus: null
    default property alias content: body.data
    property alias buttons: buttonRow.data
    readonly property int top: Theme.sheetTop
    signal findWanted()   // the shortcut for Find, which is the window's while no sheet is open

    parent: T.Overlay.overlay
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.max(Theme.gap, Math.min(top, parent.height - height - Theme.gap)) : top
    width: parent ? Math.min(preferredWidth, parent.width - 2 * Theme.large) : preferredWidth
    height: parent ? Math.min(implicitHeight, parent.height - 2 * Theme.gap) : implicitHeight
    readonly property int room: Theme.snug   // for focus rings at the sides of what scrolls
    implicitHeight: column.implicitHeight + 2 * (padding + room)
    padding: Theme.wide - room
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick } }
    T.Overlay.modal: Rectangle { color: Theme.scrim }
    background: Rectangle {
        radius: Theme.cornerSheet
        color: Theme.card
        border.color: Theme.edge
        border.width: Theme.hairline
    }
    // The keyboard comes back to where it was; who came by keyboard sees where it is.
    property Item opener: null
    property int reason: Qt.PopupFocusReason
    onAboutToShow: {
        opener = parent ? parent.Window.activeFocusItem : null
        reason = opener && opener.visualFocus ? Qt.TabFocusReason : Qt.PopupFocusReason
        if (firstFocus) firstFocus.focus = true
    }
    onOpened: if (firstFocus && firstFocus.activeFocus) firstFocus.focusReason = reason
    onClosed: if (opener && opener.visible && opener.enabled) opener.forceActiveFocus(reason)
    contentItem: Flickable {
        clip: true
        contentWidth: width
        contentHeight: column.implicitHeight + 2 * root.room
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: VScrollBar {}
        // The panes below stay as they are until the sheet is closed.
        Keys.onShortcutOverride: event => {
            const pane = event.modifiers === Qt.ControlModifier && event.key >= Qt.Key_1 && event.key <= Qt.Key_5
            event.accepted = pane || event.matches(StandardKey.Find)
        }
        Keys.onPressed: event => {
            if (!event.matches(StandardKey.Find)) return
            event.accepted = true
            root.findWanted()
        }
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Accessible.description: root.text
        Column {
            id: column
            x: root.room
            y: root.room
            width: parent.width - 2 * root.room
            spacing: Theme.medium
            Label {
                kind: "headline"
                text: root.title
                width: parent.width
                visible: root.title.length > 0
            }
            Label {
                text: root.text
                secondary: true
                width: parent.width
                visible: root.text.length > 0
            }
            Column {
                id: body
                width: parent.width
                spacing: Theme.medium
                visible: children.length > 0
            }
            Flow {
                id: buttonRow
                width: parent.width
                layoutDirection: Qt.RightToLeft
                spacing: Theme.snug
                visible: children.length > 0
            }
        }
    }
}
