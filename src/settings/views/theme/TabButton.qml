// A pane's tab: its symbol over its name, as wide as its words need.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.TabButton {
    id: root
    property string symbol

    implicitWidth: Math.max(76, label.implicitWidth + Theme.gap + Theme.small)
    implicitHeight: Theme.glyphLarge + label.implicitHeight + 3 * Theme.small + Theme.snug
    width: implicitWidth   // without a width of its own each is as wide as the widest
    focusPolicy: checked || activeFocus ? Qt.StrongFocus : Qt.ClickFocus   // one stop for all; arrows move inside
    Accessible.name: text
    Accessible.ignored: !visible
    Accessible.role: Accessible.PageTab
    Accessible.selected: checked
    Accessible.onPressAction: clicked()   // the role alone offers no action
    background: Rectangle {
        radius: Theme.corner
        color: root.checked ? Theme.chosen : root.pressed ? Theme.press
             : root.hovered ? Theme.hover : Theme.clear
        FocusRing { gap: 0; radius: Theme.corner; visible: root.visualFocus }
    }
    contentItem: Item {
        Glyph {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.snug
            size: Theme.glyphLarge
            symbol: root.symbol
            color: root.checked ? Theme.accent : Theme.textSecondary
        }
        Label {
            id: label
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom
                      bottomMargin: Theme.small + Theme.tight }
            text: root.text
            font.pixelSize: Theme.sizeTab
            font.weight: root.checked ? Font.DemiBold : Font.Medium
            color: root.checked ? Theme.accent : Theme.textSecondary
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
}
