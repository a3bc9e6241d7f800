// A setting that is on or off; the whole row switches it.
import QtQuick
import Velotap

SettingRow {
    id: root
    property bool on: false
    signal switched(bool wish)

    wordsIgnored: true
    MouseArea {
        parent: root
        anchors.fill: parent
        z: -1
        enabled: root.enabled
        onClicked: root.switched(!root.on)
    }
    trailing: Toggle {
        on: root.on
        name: root.title
        help: root.caption
        enabled: root.enabled
        onSwitched: value => root.switched(value)
    }
}
