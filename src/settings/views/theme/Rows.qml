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
    readonly property int atOnce: 8   // before anybody knows how high anything is
    property bool looked: false

    // Makes the rows that are within one height of the view above and below it.
    function look() {
        if (!view || !view.contentItem || !visible) return
        forceLayout()
        const top = view.contentY - view.contentItem.mapFromItem(root, 0, 0).y
        looked = true
        for (let i = 0; i < repeater.count; ++i) {
            const place = repeater.itemAt(i)
            if (!place || place.y > top + 2 * view.height) return
            if (place.made || place.y + place.height < top - view.height) continue
            place.ahead = place.y > top + view.height || place.y + place.height < top
            place.made = true
        }
    }

    width: parent ? parent.width : 0
    onViewChanged: Qt.callLater(look)
    onYChanged: Qt.callLater(look)
    onVisibleChanged: Qt.callLater(look)
    Component.onCompleted: Qt.callLater(look)
    Connections {
        target: root.view
        function onContentYChanged() { Qt.callLater(root.look) }
        function onHeightChanged() { Qt.callLater(root.look) }
        function onContentHeightChanged() { Qt.callLater(root.look) }
    }
    Repeater {
        id: repeater
        onCountChanged: Qt.callLater(root.look)
        Item {
            id: place
            required property var row
            required property int index
            property bool made: false
            property bool ahead: false

            width: root.width
            height: loader.item ? loader.item.implicitHeight : root.estimate
            Component.onCompleted: if (!root.looked && index < root.atOnce) made = true
            Loader {
                id: loader
                readonly property var row: place.row
                readonly property int index: place.index
                width: parent.width
                active: place.made
                asynchronous: place.ahead   // what shows is there with the first picture
                sourceComponent: root.delegate
                onLoaded: if (place.index === 0) root.estimate = item.implicitHeight
            }
        }
    }
}
