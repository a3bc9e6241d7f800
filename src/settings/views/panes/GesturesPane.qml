// The gestures of one kind of device: on or off, and what each is.
import QtQuick
import Velotap

PaneScroll {
    id: root
    property var pane
    property var practice
    readonly property var s: pane.state

    function showDetails() {
        filters.expanded = true
        pane.explain(pane.firstTrigger())
    }
    function openPractice() { sheet.open() }

    Introduction { symbol: "hand.tap"; title: root.s.intro.title; text: root.s.intro.text }

    Column {
        width: parent.width
        spacing: Theme.medium
        SegmentedPicker {
            name: root.s.device.name
            options: root.s.device.options
            value: root.s.device.value
            onChosen: value => root.pane.setDevice(value)
        }
        Item {
            width: parent.width
            implicitHeight: Math.max(connection.implicitHeight, tryButton.implicitHeight)
            height: implicitHeight
            Row {
                id: connection
                anchors { left: parent.left; right: tryButton.left; rightMargin: Theme.medium
                          verticalCenter: parent.verticalCenter }
                spacing: Theme.snug
                Glyph {
                    id: connectionMark
                    y: Math.round((connectionText.implicitHeight - height) / 2)
                    symbol: root.s.connection.symbol
                    color: root.s.connection.connected ? Theme.good : Theme.textSecondary
                }
                Caption {
                    id: connectionText
                    width: parent.width - connectionMark.width - parent.spacing
                    text: root.s.connection.text
                }
            }
            PushButton {
                id: tryButton
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                symbol: "cursorarrow.click"
                text: root.s.tryButton
                onClicked: sheet.open()
            }
        }
        SearchField {
            hint: root.s.search.hint
            clearText: root.s.search.clear
            query: root.s.search.query
            onEdited: query => root.pane.setQuery(query)
        }
        Card {
            FilterDisclosure {
                id: filters
                title: root.s.filter.title
                activeCount: root.s.filter.active
                resetText: root.s.filter.reset
                onReset: root.pane.resetFilters()
                SegmentedPicker {
                    name: root.s.filter.sectionName
                    options: root.s.filter.sections
                    value: root.s.filter.section
                    onChosen: value => root.pane.setSection(value)
                }
                FilterToggle {
                    title: root.s.filter.enabledOnly.title
                    on: root.s.filter.enabledOnly.on
                    onSwitched: wish => root.pane.setEnabledOnly(wish)
                }
                FilterToggle {
                    title: root.s.filter.modifiedOnly.title
                    on: root.s.filter.modifiedOnly.on
                    onSwitched: wish => root.pane.setModifiedOnly(wish)
                }
            }
        }
        Caption { text: root.s.summary; width: parent.width; leftPadding: Theme.tight }
    }

    Section {
        title: root.s.mode.title
        visible: root.s.mode.shown
        Card {
            pad: Theme.medium
            Column {
                width: parent.width
                spacing: Theme.snug
                SegmentedPicker {
                    name: root.s.mode.title
                    options: root.s.mode.options
                    value: root.s.mode.value
                    onChosen: value => root.pane.setTrackpadMode(value)
                }
                Caption { text: root.s.mode.note; width: parent.width; leftPadding: Theme.tight }
            }
        }
    }
    Section {
        title: root.s.middleTitle
        visible: root.pane.middle.count > 0
        Card {
            Repeater {
                model: root.pane.middle
                GestureRow { pane: root.pane }
            }
        }
    }
    Section {
        title: root.s.moreTitle
        visible: root.pane.more.count > 0
        Card {
            Repeater {
                model: root.pane.more
                GestureRow { pane: root.pane }
            }
        }
    }
    Card {
        visible: root.s.empty.shown
        EmptyState {
            symbol: "magnifyingglass"
            title: root.s.empty.title
            action: root.s.empty.action
            onActed: root.pane.resetFilters()
        }
    }

    Section {
        title: root.s.actionsTitle
        Flow {
            width: parent.width
            spacing: Theme.snug
            PushButton {
                text: root.s.disable.title
                enabled: root.s.disable.possible
                onClicked: disableSheet.open()
            }
            PushButton {
                text: root.s.restore.title
                symbol: "arrow.counterclockwise"
                enabled: root.s.restore.possible
                onClicked: {
                    const byKeyboard = visualFocus
                    root.pane.restoreDefaults()   // after which there is nothing to restore
                    if (byKeyboard) undoButton.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            PushButton {
                id: undoButton
                text: root.s.undo
                symbol: "arrow.uturn.backward"
                kind: "primary"
                visible: text.length > 0
                onClicked: root.pane.undo()
            }
        }
        Caption { text: root.s.restore.note; width: parent.width; leftPadding: Theme.tight }
    }

    ConfirmSheet {
        id: disableSheet
        title: root.s.disable.question
        text: root.s.disable.note
        confirm: root.s.disable.confirm
        cancel: root.s.disable.cancel
        destructive: true
        onAccepted: {
            root.pane.disableAll()
            opener = undoButton   // there is nothing more to turn off
        }
    }
    PracticeSheet { id: sheet; pane: root.practice }
}
