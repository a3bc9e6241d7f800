// A button that is only a symbol; its text is for the tip, its name for the screen reader.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.Button {
    id: root
    property string symbol
    property string name: text   // longer than the text where that says enough only beside others
    property color color: Theme.textSecondary
    property bool expandable: false
    property bool expanded: false

    implicitWidth: 28
    implicitHeight: 28
    opacity: enabled ? 1 : 0.4
    Accessible.name: name
    Accessible.ignored: !visible
    Accessible.checkable: expandable
    Accessible.checked: expanded
    Accessible.onPressAction: if (enabled) clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Accessible.onToggleAction: if (enabled) clicked()
    background: Rectangle {
        radius: Theme.cornerSmall
        color: root.down ? Theme.press : root.hovered ? Theme.hover : Theme.clear
        FocusRing { gap: 0; radius: Theme.cornerSmall; visible: root.visualFocus }
    }
    contentItem: Item {
        Glyph { anchors.centerIn: parent; symbol: root.symbol; color: root.color; size: Theme.glyph }
    }
    // A tip is a window of its own, far more than the button; most buttons are never pointed at.
    property Tip tip: null
    Component { id: tips; Tip { text: root.text; visible: root.hovered && !root.down } }
    onHoveredChanged: if (hovered && !tip) tip = tips.createObject(root)
}
