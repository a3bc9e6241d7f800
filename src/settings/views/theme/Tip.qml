import QtQuick
import QtQuick.Templates as T
import Velotap

T.ToolTip {
    id: root
    delay: 600
    timeout: 8000
    padding: Theme.snug
    implicitWidth: Math.min(label.implicitWidth, 260) + 2 * padding
    implicitHeight: label.implicitHeight + 2 * padding
    y: parent ? parent.height + Theme.small : 0
    margins: Theme.snug
    background: Rectangle {
        color: Theme.card
        border.color: Theme.edge
        border.width: Theme.hairline
        radius: Theme.cornerSmall
    }
    contentItem: Caption { id: label; text: root.text; Accessible.ignored: true }
}
