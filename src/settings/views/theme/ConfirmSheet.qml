// A question before something that is not easily taken back. Cancel has the keyboard.
import QtQuick
import Velotap

Sheet {
    id: root
    property string confirm
    property string cancel
    property bool destructive: false
    signal accepted()

    firstFocus: cancelButton
    buttons: [
        PushButton {
            text: root.confirm
            kind: root.destructive ? "danger" : "primary"
            onClicked: { root.accepted(); root.close() }
        },
        PushButton {
            id: cancelButton
            text: root.cancel
            onClicked: root.close()
        }
    ]
}
