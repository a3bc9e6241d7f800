// A row that leads somewhere; all of it is the button.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.Button {
    id: root
    property string title
    property string caption
    property string symbol
    property bool divided: false

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.rowHeight, words.implicitHeight + 2 * (Theme.snug + Theme.tight))
    Accessible.name: title
    Accessible.ignored: !visible
    Accessible.description: caption
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    background: Rectangle {
        anchors { fill: parent; margins: Theme.hairline }
        radius: Theme.cornerLarge - Theme.hairline
        color: root.down ? Theme.press : root.hovered ? Theme.hover : Theme.clear
        Divider { visible: root.divided }
        FocusRing { gap: -2; radius: Theme.cornerLarge - 2; visible: root.visualFocus }
    }
    contentItem: Item {
        Glyph {
            id: mark
            x: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            symbol: root.symbol
            size: Theme.glyphMedium
            visible: root.symbol.length > 0
            width: visible ? size : 0
        }
        Column {
            id: words
            anchors { left: mark.right; leftMargin: mark.visible ? Theme.medium : 0
                      right: arrow.left; rightMargin: Theme.medium
                      verticalCenter: parent.verticalCenter }
            spacing: Theme.tight
            Label { text: root.title; width: parent.width; Accessible.ignored: true }
            Caption {
                text: root.caption
                width: parent.width
                visible: text.length > 0
                Accessible.ignored: true
            }
        }
        Glyph {
            id: arrow
            anchors { right: parent.right; rightMargin: Theme.gap; verticalCenter: parent.verticalCenter }
            symbol: "chevron.right"
            color: Theme.textTertiary
            size: Theme.glyphSmall
        }
    }
}
