// The rules for single applications: where the program keeps still, and where it types shortcuts.
import QtQuick
import Velotap

PaneScroll {
    id: root
    property var pane
    readonly property var s: pane.state

    function showDetails() { filters.expanded = true }
    function openChooser() { runningSheet.open() }

    Introduction { symbol: "app.badge.checkmark"; title: root.s.intro.title; text: root.s.intro.text }

    Column {
        width: parent.width
        spacing: Theme.medium
        Note {
            visible: root.s.unavailable.length > 0
            tone: "warning"
            symbol: "exclamationmark.triangle"
            text: root.s.unavailable
        }
        SearchField {
            hint: root.s.search.hint
            name: root.s.search.name
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
                Repeater {
                    model: root.s.filter.pickers
                    Column {
                        id: picker
                        required property var modelData
                        width: parent.width
                        spacing: Theme.small
                        Caption { text: picker.modelData.title; width: parent.width }
                        SegmentedPicker {
                            name: picker.modelData.title
                            options: picker.modelData.options
                            value: picker.modelData.value
                            onChosen: value => root.pane.setFilter(picker.modelData.id, value)
                        }
                    }
                }
                FilterToggle {
                    title: root.s.filter.overridden.title
                    on: root.s.filter.overridden.on
                    onSwitched: wish => root.pane.setOverriddenOnly(wish)
                }
                Column {
                    width: parent.width
                    spacing: Theme.small
                    Caption { text: root.s.filter.sort.title; width: parent.width }
                    SegmentedPicker {
                        name: root.s.filter.sort.title
                        options: root.s.filter.sort.options
                        value: root.s.filter.sort.value
                        onChosen: value => root.pane.setFilter("sort", value)
                    }
                }
                FilterToggle {
                    title: root.s.filter.identifiers.title
                    on: root.s.filter.identifiers.on
                    onSwitched: wish => root.pane.setShowsIdentifiers(wish)
                }
            }
        }
        Caption {
            text: root.s.count
            width: parent.width
            leftPadding: Theme.tight
            visible: text.length > 0
        }
        Note {
            visible: root.s.message.length > 0
            symbol: "checkmark.circle"
            tone: "accent"
            text: root.s.message
        }
        Note {
            visible: root.s.undo.text.length > 0
            symbol: "minus.circle"
            tone: "accent"
            text: root.s.undo.text + "\n" + root.s.undo.note
            action: root.s.undo.action
            actionSymbol: "arrow.uturn.backward"
            onActed: root.pane.undo()
        }
    }

    Card {
        visible: root.s.empty.shown
        EmptyState {
            symbol: "magnifyingglass"
            title: root.s.empty.title
            text: root.s.empty.text
            action: root.s.empty.action
            onActed: root.pane.resetFilters()
        }
    }
    Repeater {
        model: ["ignored", "zoom"]
        Section {
            id: ruleSection
            required property string modelData
            readonly property var shown: root.s.lists[modelData]
            readonly property var rules: modelData === "ignored" ? root.pane.ignored : root.pane.zoom
            title: shown.title
            visible: shown.visible
            Card {
                Rows {
                    view: root
                    model: ruleSection.rules
                    delegate: AppRow {
                        row: parent.row
                        index: parent.index
                        pane: root.pane
                        list: ruleSection.modelData
                    }
                }
                EmptyState {
                    visible: ruleSection.rules.count === 0
                    title: ruleSection.shown.none
                }
            }
            AddAppMenu {
                text: root.s.adding.title
                name: ruleSection.shown.add
                choose: root.s.adding.choose
                running: root.s.adding.running
                onChooseWanted: {
                    if (!root.s.adding.listsInstalled) return root.pane.chooseApplications(ruleSection.modelData)
                    root.pane.openInstalled(ruleSection.modelData)
                    runningSheet.open()
                }
                onRunningWanted: { root.pane.openRunning(ruleSection.modelData); runningSheet.open() }
            }
        }
    }
    PushButton {
        text: root.s.removeVisible.title
        symbol: "minus.circle"
        visible: root.s.removeVisible.possible
        onClicked: removeSheet.open()
    }

    Section {
        title: root.s.suggestions.title
        Card {
            Repeater {
                model: root.pane.suggestions
                SuggestionRow { pane: root.pane }
            }
            EmptyState { visible: root.pane.suggestions.count === 0; title: root.s.suggestions.none }
        }
    }

    ConfirmSheet {
        id: removeSheet
        title: root.s.removeVisible.question
        text: root.s.removeVisible.note
        confirm: root.s.removeVisible.confirm
        cancel: root.s.removeVisible.cancel
        destructive: true
        onAccepted: root.pane.removeVisible()
    }
    RunningSheet { id: runningSheet; pane: root.pane }
}
