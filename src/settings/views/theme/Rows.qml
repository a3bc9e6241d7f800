// Many rows below each other of which only those near the visible part are made. A row that was
// made stays. The others hold the place of one that is as high as the first, and are made ahead of
// the part that shows, so that scrolling and the keyboard find them there.
import QtQuick
import Velotap

Column {
    id: root
    property alias model: repeater.model
    property Component delegate   // finds `row` and `index` in its item's parent
    property Flickable view       // what the rows scroll in
    property real estimate: Theme.rowHeight
    readonly property int atOnce: 12
    property real above: 0        // the part in which rows are made, in own coordinates
    property real below: 0

    function look() {
        if (!view || !view.contentItem) return
        const top = view.contentY - view.contentItem.mapFromItem(root, 0, 0).y
        above = top - view.height
        below = top + 2 * view.height
    }

    width: parent ? parent.width : 0
    onViewChanged: look()
    onYChanged: look()
    onVisibleChanged: look()
    Component.onCompleted: look()
    Connections {
        target: root.view
        function onContentYChanged() { root.look() }
        function onHeightChanged() { root.look() }
        function onContentHeightChanged() { root.look() }
    }
    Repeater {
        id: repeater
        Item {
            id: place
            required property var row
            required property int index
            readonly property bool near: y + height >= root.above && y <= root.below
            property bool made: false

            width: root.width
            height: loader.item ? loader.item.implicitHeight : root.estimate
            onNearChanged: if (near) made = true
            Component.onCompleted: if (near || index < root.atOnce) made = true
            Loader {
                id: loader
                readonly property var row: place.row
                readonly property int index: place.index
                width: parent.width
                active: place.made
                // The first ones are there with the first picture.
                asynchronous: place.index >= root.atOnce
                sourceComponent: root.delegate
                onLoaded: if (place.index === 0) root.estimate = item.implicitHeight
            }
        }
    }
}
