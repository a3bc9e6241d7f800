// A kind of device, and whether one is there; leads to its gestures.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.Button {
    id: root
    property string symbol
    property string title
    property string status
    property string statusSymbol
    property string help
    property bool connected: false

    implicitHeight: Math.max(badge.height, words.implicitHeight) + 2 * Theme.gap
    Accessible.name: title
    Accessible.ignored: !visible
    Accessible.description: status + ". " + help
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    background: Rectangle {
        radius: Theme.cornerLarge
        color: root.down ? Theme.press : root.hovered ? Theme.hover : Theme.card
        border.color: Theme.line
        border.width: Theme.hairline
        FocusRing { radius: Theme.cornerLarge + gap; visible: root.visualFocus }
    }
    contentItem: Item {
        Rectangle {
            id: badge
            x: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.badgeLarge
            height: Theme.badgeLarge
            radius: Theme.corner
            color: root.connected ? Theme.accentSoft : Theme.neutralSoft
            Glyph {
                anchors.centerIn: parent
                symbol: root.symbol
                size: Theme.glyphLarge
                color: root.connected ? Theme.accent : Theme.textSecondary
            }
        }
        Column {
            id: words
            anchors { left: badge.right; leftMargin: Theme.medium
                      right: parent.right; rightMargin: Theme.medium
                      verticalCenter: parent.verticalCenter }
            spacing: Theme.tight
            Label { kind: "strong"; text: root.title; width: parent.width; Accessible.ignored: true }
            Row {
                width: parent.width
                spacing: Theme.small
                Glyph {
                    id: statusMark
                    y: Math.round((statusText.implicitHeight - height) / 2)
                    symbol: root.statusSymbol
                    size: Theme.glyphSmall
                    color: root.connected ? Theme.good : Theme.textSecondary
                }
                Caption {
                    id: statusText
                    width: parent.width - statusMark.width - parent.spacing
                    text: root.status
                    Accessible.ignored: true
                }
            }
        }
    }
    Tip { text: root.help; visible: root.hovered && !root.down }
}
