// An application that can be chosen among others.
import QtQuick
import QtQuick.Templates as T
import Velotap

T.CheckBox {
    id: root
    property string title
    property string caption
    property string iconName
    property bool on: false
    property bool divided: false
    signal switched()
    function wish() {
        checked = Qt.binding(() => root.on)
        root.switched()
    }

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.rowHeight, words.implicitHeight + 2 * Theme.snug)
    checked: on
    onToggled: wish()
    Accessible.name: title
    Accessible.ignored: !visible
    Accessible.description: caption
    Accessible.onPressAction: wish()
    Accessible.onToggleAction: wish()
    background: Rectangle {
        anchors { fill: parent; margins: Theme.hairline }
        radius: Theme.cornerLarge - Theme.hairline
        color: root.down ? Theme.press : root.hovered ? Theme.hover : Theme.clear
        Divider { visible: root.divided }
        FocusRing { gap: -2; radius: Theme.cornerLarge - 2; visible: root.visualFocus }
    }
    contentItem: Item {
        Rectangle {
            id: box
            x: Theme.medium
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.glyphMedium
            height: width
            radius: Theme.small
            color: root.checked ? Theme.fill : Theme.card
            border.color: root.checked ? Theme.fill : Theme.edge
            border.width: Theme.hairline
            Glyph {
                anchors.centerIn: parent
                visible: root.checked
                symbol: "checkmark"
                size: Theme.glyphSmall
                color: Theme.fillText
            }
        }
        AppIcon {
            id: picture
            anchors { left: box.right; leftMargin: Theme.medium; verticalCenter: parent.verticalCenter }
            icon: root.iconName
            name: root.title
            size: Theme.large
        }
        Column {
            id: words
            anchors { left: picture.right; leftMargin: Theme.medium; right: parent.right
                      rightMargin: Theme.medium; verticalCenter: parent.verticalCenter }
            Label { text: root.title; width: parent.width; Accessible.ignored: true }
            Caption {
                text: root.caption
                width: parent.width
                wrapMode: Text.WrapAnywhere
                visible: text.length > 0
                Accessible.ignored: true
            }
        }
    }
}
