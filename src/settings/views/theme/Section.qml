// A heading, perhaps a caption, and what stands under them.
import QtQuick
import Velotap

Column {
    id: root
    property string title
    property string caption
    default property alias content: body.data
    property alias trailing: trail.data

    width: parent ? parent.width : 0
    spacing: Theme.snug
    Item {
        width: parent.width
        implicitHeight: Math.max(head.implicitHeight, trail.implicitHeight)
        height: implicitHeight
        visible: root.title.length > 0
        Column {
            id: head
            anchors { left: parent.left; right: trail.left; rightMargin: Theme.snug
                      verticalCenter: parent.verticalCenter }
            spacing: Theme.tight
            Label { kind: "heading"; text: root.title; width: parent.width; leftPadding: Theme.tight }
            Caption {
                text: root.caption
                visible: root.caption.length > 0
                width: parent.width
                leftPadding: Theme.tight
            }
        }
        Row {
            id: trail
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: Theme.snug
        }
    }
    Column {
        id: body
        width: parent.width
        spacing: Theme.snug
    }
}
