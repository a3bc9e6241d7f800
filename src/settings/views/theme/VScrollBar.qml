import QtQuick
import QtQuick.Templates as T
import Velotap

T.ScrollBar {
    id: root
    implicitWidth: 10
    padding: Theme.tight
    minimumSize: 0.08
    visible: size < 1
    Accessible.ignored: true
    contentItem: Rectangle {
        implicitWidth: 6
        radius: width / 2
        color: Theme.edge
        opacity: root.pressed ? 1 : root.active ? 0.8 : 0.4
        Behavior on opacity { enabled: !App.still; NumberAnimation { duration: Theme.quick } }
    }
}
