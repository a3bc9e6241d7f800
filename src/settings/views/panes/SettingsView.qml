// The settings window: tabs above, the chosen pane below. A pane that was visited stays as it is
// left for as long as the window is open.
import QtQuick
import QtQuick.Templates as T
import QtQuick.Window
import Velotap

Rectangle {
    id: root
    property var panes
    readonly property var frame: panes.window.state
    readonly property int tab: frame.tab
    onTabChanged: Qt.callLater(leaveHiddenPane)
    /// What went out of sight with its pane must not hear the keyboard any more.
    function leaveHiddenPane() {
        const item = Window.activeFocusItem
        if (item && !item.visible && tabs.itemAt(tab)) tabs.itemAt(tab).forceActiveFocus(Qt.ShortcutFocusReason)
    }

    color: Theme.window
    focus: true

    Rectangle {
        id: bar
        width: parent.width
        height: tabs.implicitHeight + Theme.medium + Theme.tight
        color: Theme.bar
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.hairline
            color: Theme.line
        }
        T.TabBar {
            id: tabs
            anchors.centerIn: parent
            spacing: Math.max(0, Math.min(Theme.small, (root.width - 2 * Theme.snug - natural) / 4))
            readonly property real natural: {
                let sum = 0
                for (let i = 0; i < count; ++i) sum += itemAt(i) ? itemAt(i).implicitWidth : 0
                return sum
            }
            implicitWidth: natural + spacing * (count - 1)
            implicitHeight: count > 0 && itemAt(0) ? itemAt(0).implicitHeight : 0
            currentIndex: root.frame.tab
            Accessible.role: Accessible.PageTabList
            Accessible.name: root.frame.title
            contentItem: ListView {
                model: tabs.contentModel
                currentIndex: tabs.currentIndex
                spacing: tabs.spacing
                orientation: ListView.Horizontal
                interactive: false
                implicitWidth: contentWidth
            }
            function choose(index) {
                root.panes.window.setTab((index + count) % count)
                itemAt(currentIndex).forceActiveFocus(Qt.TabFocusReason)
            }
            Keys.onRightPressed: choose(currentIndex + 1)
            Keys.onLeftPressed: choose(currentIndex - 1)
            Repeater {
                model: root.panes.window.tabs
                TabButton {
                    required property var row
                    required property int index
                    text: row.label
                    symbol: row.symbol
                    onClicked: {
                        root.panes.window.setTab(index)
                        tabs.currentIndex = Qt.binding(() => root.frame.tab)
                    }
                }
            }
        }
    }
    Item {
        id: body
        anchors { top: bar.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        Repeater {
            id: pages
            model: [generalPane, gesturesPane, tuningPane, appsPane, aboutPane]
            Loader {
                required property var modelData
                required property int index
                readonly property bool current: root.frame.tab === index
                anchors.fill: parent
                visible: current
                active: false
                sourceComponent: modelData
                onCurrentChanged: if (current) active = true
                Component.onCompleted: if (current) active = true
            }
        }
    }
    Component { id: generalPane; GeneralPane { pane: root.panes.general } }
    Component { id: gesturesPane; GesturesPane { pane: root.panes.gestures; practice: root.panes.practice } }
    Component { id: tuningPane; TuningPane { pane: root.panes.tuning } }
    Component { id: appsPane; AppsPane { pane: root.panes.apps } }
    Component { id: aboutPane; AboutPane { pane: root.panes.about } }

    /// Opens what pictures of the details show; the practice place, for its picture.
    function showDetails(details, practice) {
        const pane = page(frame.tab)
        if (details) pane.showDetails()
        if (practice) pane.openPractice()
    }
    function page(index) { return pages.itemAt(index).item }
    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: {
            root.panes.window.setTab(0)
            root.page(0).find()
        }
    }
    Shortcut { sequences: [StandardKey.Close]; onActivated: root.panes.window.close() }
    Shortcut { sequence: "Ctrl+M"; onActivated: root.panes.window.minimise() }
    Shortcut { sequence: "Ctrl+Q"; onActivated: root.panes.window.quit() }
    Shortcut { sequence: "Ctrl+,"; onActivated: root.panes.window.setTab(0) }
    Repeater {
        model: 5
        Item {
            required property int index
            Shortcut { sequence: "Ctrl+" + (index + 1); onActivated: root.panes.window.setTab(index) }
        }
    }
}
