// Speaks. Before Qt 6.8 there is no event for it; screen readers do act on a notification that
// starts to show.
import QtQuick
import Velotap

Item {
    id: root
    width: Theme.hairline
    height: Theme.hairline
    visible: false
    Accessible.role: Accessible.Notification
    Timer { id: off; interval: 4000; onTriggered: root.visible = false }
    Connections {
        target: App
        function onAnnounced(text) {
            root.visible = false
            root.Accessible.name = text
            root.visible = true
            off.restart()
        }
    }
}
