// Does it work, and if not, what is missing; then the switches of the whole program.
import QtQuick
import Velotap

PaneScroll {
    id: root
    property var pane
    readonly property var s: pane.state
    function showDetails() { readiness.expanded = true }
    function find() { search.forceActiveFocus(Qt.ShortcutFocusReason) }

    Column {
        width: parent.width
        spacing: Theme.snug
        SearchField {
            id: search
            hint: root.s.search.hint
            clearText: root.s.search.clear
            query: root.s.search.query
            onEdited: query => root.pane.setQuery(query)
        }
        Card {
            visible: root.s.search.active
            Repeater {
                model: root.pane.results
                RowButton {
                    required property var row
                    required property int index
                    divided: index > 0
                    title: row.title
                    caption: row.caption
                    onClicked: root.pane.openResult(row.id)
                }
            }
            EmptyState {
                visible: root.pane.results.count === 0
                symbol: "magnifyingglass"
                title: root.s.search.none
            }
        }
    }

    Card {
        StatusCard {
            symbol: root.s.status.symbol
            tone: root.s.status.tone
            title: root.s.status.title
            text: root.s.status.detail
            action: root.s.status.action
            onActed: root.pane.act()
        }
        Divider {}
        ToggleRow {
            title: root.s.enable.title
            on: root.s.enable.on
            onSwitched: wish => root.pane.setEnabled(wish)
        }
        Divider {}
        Disclosure {
            id: readiness
            title: root.s.readiness.title
            symbol: root.s.readiness.symbol
            symbolColor: Theme.tone(root.s.readiness.tone)
            spoken: root.s.readiness.status
            Repeater {
                model: root.pane.readiness
                SettingRow {
                    required property var row
                    symbol: row.symbol
                    symbolColor: Theme.tone(row.tone)
                    title: row.title
                    caption: row.caption
                    trailing: PushButton {
                        text: row.action
                        visible: text.length > 0
                        onClicked: root.pane.resolve(row.id)
                    }
                }
            }
        }
    }

    Column {
        width: parent.width
        spacing: Theme.snug
        visible: root.pane.notes.count > 0
        Repeater {
            model: root.pane.notes
            Note {
                required property var row
                text: row.text
            }
        }
    }

    Section {
        title: root.s.devices.title
        Flow {
            id: cards
            width: parent.width
            spacing: Theme.medium
            readonly property bool narrow: width < 2 * Theme.cardWidth + spacing
            readonly property real tallest: {
                let most = 0
                for (let i = 0; i < each.count; ++i) {
                    const card = each.itemAt(i)
                    if (card) most = Math.max(most, card.implicitHeight)
                }
                return most
            }
            Repeater {
                id: each
                model: root.pane.devices
                DeviceCard {
                    required property var row
                    width: cards.narrow ? cards.width : (cards.width - cards.spacing) / 2
                    height: cards.narrow ? implicitHeight : cards.tallest
                    symbol: row.symbol
                    title: row.name
                    status: row.status
                    statusSymbol: row.statusSymbol
                    connected: row.connected
                    help: row.help
                    onClicked: root.pane.openDevice(row.id)
                }
            }
        }
        Flow {
            x: Theme.tight - Theme.snug   // the words stand below the heading, not the button's edge
            width: parent.width - x
            spacing: Theme.snug
            PushButton {
                kind: "link"
                symbol: "hand.tap"
                text: root.s.devices.openGestures
                onClicked: root.pane.openGestures()
            }
            PushButton {
                kind: "link"
                symbol: "slider.horizontal.3"
                text: root.s.devices.openTuning
                onClicked: root.pane.openTuning()
            }
        }
    }

    Section {
        title: root.s.startup.title
        Card {
            ToggleRow {
                title: root.s.startup.launch.title
                caption: root.s.startup.launch.caption
                symbol: "power"
                on: root.s.startup.launch.on
                onSwitched: wish => root.pane.setLaunchAtLogin(wish)
                PushButton {
                    text: root.s.startup.launch.action
                    visible: text.length > 0
                    onClicked: root.pane.openLoginItems()
                }
            }
            Divider {}
            ToggleRow {
                title: root.s.startup.leftClick.title
                caption: root.s.startup.leftClick.caption
                symbol: "cursorarrow.click"
                on: root.s.startup.leftClick.on
                onSwitched: wish => root.pane.setLeftClickToggles(wish)
            }
            Divider {}
            ToggleRow {
                title: root.s.startup.hide.title
                caption: root.s.startup.hide.caption
                symbol: "menubar"
                on: root.s.startup.hide.on
                onSwitched: wish => { if (wish) hideSheet.open(); else root.pane.setHideIcon(false) }
            }
        }
    }

    Section {
        title: root.s.desktop.title
        visible: root.pane.desktop.count > 0
        Card {
            Repeater {
                model: root.pane.desktop
                Column {
                    id: fact
                    required property var row
                    required property int index
                    width: parent ? parent.width : 0
                    Divider { visible: fact.index > 0 }
                    SettingRow {
                        symbol: fact.row.symbol
                        symbolColor: Theme.tone(fact.row.tone)
                        title: fact.row.title
                        caption: fact.row.caption
                    }
                }
            }
        }
    }

    Section {
        title: root.s.updates.title
        Card {
            ToggleRow {
                title: root.s.updates.automatic.title
                symbol: "arrow.clockwise"
                on: root.s.updates.automatic.on
                enabled: root.s.updates.available
                onSwitched: wish => root.pane.setAutomaticUpdates(wish)
            }
            Divider {}
            SettingRow {
                title: root.s.updates.last
                symbol: "clock"
                trailing: PushButton {
                    text: root.s.updates.checkNow
                    enabled: root.s.updates.available
                    onClicked: root.pane.checkForUpdates()
                }
            }
        }
    }

    ConfirmSheet {
        id: hideSheet
        title: root.s.startup.hide.question
        text: root.s.startup.hide.note
        confirm: root.s.startup.hide.confirm
        cancel: root.s.startup.hide.cancel
        onAccepted: root.pane.setHideIcon(true)
    }
}
