// A switch among filters.
import QtQuick
import Velotap

Item {
    id: root
    property string title
    property bool on: false
    signal switched(bool wish)

    width: parent ? parent.width : 0
    implicitHeight: Math.max(label.implicitHeight, toggle.implicitHeight)
    height: implicitHeight
    Label {
        id: label
        anchors { left: parent.left; right: toggle.left; rightMargin: Theme.medium
                  verticalCenter: parent.verticalCenter }
        text: root.title
        Accessible.ignored: true
    }
    MouseArea { anchors.fill: parent; onClicked: root.switched(!root.on) }
    Toggle {
        id: toggle
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        on: root.on
        name: root.title
        onSwitched: wish => root.switched(wish)
    }
}
