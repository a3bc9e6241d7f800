// A heading that opens and closes what stands under it.
import QtQuick
import QtQuick.Templates as T
import Velotap

Column {
    id: root
    property string title
    property string summary
    property string spoken: summary     // what the symbol tells those who do not see it
    property string symbol
    property color symbolColor: Theme.accent
    property bool quiet: false          // a caption that opens, as for filters
    property bool expanded: false
    default property alias content: body.data

    width: parent ? parent.width : 0
    T.Button {
        id: head
        width: parent.width
        implicitHeight: Math.max(root.quiet ? Theme.controlHeight : Theme.rowHeight,
                                 words.implicitHeight + 2 * (root.quiet ? Theme.small : Theme.medium))
        text: root.title
        onClicked: root.expanded = !root.expanded
        Accessible.name: root.title
        Accessible.ignored: !visible
        Accessible.description: root.spoken
        Accessible.checkable: true      // Qt 6.4 has no state "expanded"
        Accessible.checked: root.expanded
        Accessible.onPressAction: clicked()
        Accessible.onToggleAction: clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        Keys.onRightPressed: root.expanded = true
        Keys.onLeftPressed: root.expanded = false
        background: Rectangle {
            radius: Theme.cornerLarge - Theme.hairline
            anchors { fill: parent; margins: Theme.hairline }
            color: head.down ? Theme.press : head.hovered ? Theme.hover : Theme.clear
            FocusRing { gap: -2; radius: Theme.cornerLarge - 2; visible: head.visualFocus }
        }
        contentItem: Item {
            Glyph {
                id: mark
                x: Theme.gap
                anchors.verticalCenter: parent.verticalCenter
                symbol: root.symbol
                size: root.quiet ? Theme.glyph : Theme.glyphMedium
                color: root.symbolColor
                visible: root.symbol.length > 0
                width: visible ? size : 0
            }
            Column {
                id: words
                anchors { left: mark.right; leftMargin: mark.visible ? Theme.medium : 0
                          right: arrow.left; rightMargin: Theme.medium
                          verticalCenter: parent.verticalCenter }
                spacing: Theme.tight
                Label {
                    kind: root.quiet ? "caption" : "body"
                    text: root.title
                    width: parent.width
                    Accessible.ignored: true
                }
                Caption {
                    text: root.summary
                    width: parent.width
                    visible: root.summary.length > 0
                    Accessible.ignored: true
                }
            }
            Glyph {
                id: arrow
                anchors { right: parent.right; rightMargin: Theme.gap
                          verticalCenter: parent.verticalCenter }
                symbol: "chevron.right"
                color: Theme.textTertiary
                size: Theme.glyphSmall
                rotation: root.expanded ? 90 : 0
                Behavior on rotation { enabled: !App.still; NumberAnimation { duration: Theme.quick } }
            }
        }
    }
    Item {
        width: parent.width
        height: root.expanded ? body.implicitHeight : 0
        visible: height > 0
        clip: true
        Behavior on height { enabled: !App.still; NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic } }
        Column {
            id: body
            width: parent.width
            bottomPadding: Theme.small
            enabled: root.expanded
        }
    }
}
