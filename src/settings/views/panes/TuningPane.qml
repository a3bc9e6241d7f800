// The limits by which a touch counts, and the taps that were measured by them.
import QtQuick
import Velotap

PaneScroll {
    id: root
    property var pane
    readonly property var s: pane.state

    function showDetails() {
        filters.expanded = true
        earlier.expanded = true
    }

    Introduction { symbol: "slider.horizontal.3"; title: root.s.intro.title; text: root.s.intro.text }

    Column {
        width: parent.width
        spacing: Theme.snug
        Note {
            symbol: root.s.summary.symbol
            tone: root.s.summary.isDefault ? "good" : "accent"
            text: root.s.summary.text
            action: root.s.summary.restore
            actionSymbol: "arrow.counterclockwise"
            onActed: root.pane.restoreDefaults()
        }
        Note {
            visible: root.s.undo.shown
            symbol: "arrow.uturn.backward"
            tone: "accent"
            text: root.s.undo.text
            action: root.s.undo.action
            onActed: root.pane.undo()
        }
    }

    Section {
        title: root.s.tap.title
        Note {
            visible: root.s.tap.off.length > 0
            text: root.s.tap.off
            action: root.s.tap.offAction
            onActed: root.pane.openGestures()
        }
        Card {
            PresetRow {
                title: root.s.tap.presets.title
                caption: root.s.tap.presets.note
                options: root.s.tap.presets.options
                value: root.s.tap.presets.value
                onChosen: value => root.pane.applyPreset(value)
            }
            Repeater {
                model: root.pane.tapSliders
                TuningSlider { pane: root.pane }
            }
        }
    }

    Section {
        title: root.s.taps.title
        caption: root.s.taps.caption
        Card {
            FilterToggle {
                x: Theme.gap
                width: parent.width - 2 * Theme.gap
                implicitHeight: Theme.rowHeight
                title: root.s.taps.pause
                on: root.s.taps.paused
                onSwitched: wish => root.pane.setPaused(wish)
            }
        }
        Note {
            visible: root.s.taps.paused
            symbol: "pause.circle"
            text: root.s.taps.pausedNote
        }
        Card {
            FilterDisclosure {
                id: filters
                title: root.s.taps.filter.title
                activeCount: root.s.taps.filter.active
                resetText: root.s.taps.filter.reset
                onReset: root.pane.resetFilters()
                Repeater {
                    model: root.s.taps.filter.pickers
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
            }
        }
        Column {
            width: parent.width
            spacing: Theme.tight
            Repeater {
                model: root.s.taps.lines
                Caption {
                    required property var modelData
                    text: modelData
                    width: parent.width
                    leftPadding: Theme.tight
                }
            }
        }
        Column {
            width: parent.width
            spacing: Theme.small
            visible: root.s.taps.reasons.options.length > 0
            Caption { text: root.s.taps.reasons.title; width: parent.width; leftPadding: Theme.tight }
            SegmentedPicker {
                name: root.s.taps.reasons.title
                options: root.s.taps.reasons.options
                value: root.s.taps.reasons.value
                onChosen: value => root.pane.setFilter("reason", value)
            }
            Caption { text: root.s.taps.reasons.note; width: parent.width; leftPadding: Theme.tight }
        }
        Card {
            Repeater {
                model: root.pane.newestTap
                TapRow { pane: root.pane }
            }
            EmptyState {
                visible: root.pane.newestTap.count === 0
                symbol: root.s.taps.emptySymbol
                title: root.s.taps.empty
            }
            Divider { visible: root.pane.otherTaps.count > 0 }
            Disclosure {
                id: earlier
                quiet: true
                visible: root.pane.otherTaps.count > 0
                title: root.s.taps.more
                Repeater {
                    model: root.pane.otherTaps
                    TapRow { pane: root.pane }
                }
            }
        }
        PushButton {
            text: root.s.taps.clear
            enabled: root.s.taps.canClear
            onClicked: root.pane.clearTaps()
        }
    }

    Section {
        title: root.s.pinch.title
        Note {
            visible: root.s.pinch.off.length > 0
            text: root.s.pinch.off
            action: root.s.pinch.offAction
            onActed: root.pane.turnOnPinch()
        }
        Card {
            Repeater {
                model: root.pane.pinchSliders
                TuningSlider { pane: root.pane }
            }
        }
    }

    Section {
        title: root.s.center.title
        caption: root.s.center.caption
        Note { visible: root.s.center.off.length > 0; text: root.s.center.off }
        Card {
            Item {
                width: parent.width
                height: band.height + 2 * Theme.gap
                CenterBand {
                    id: band
                    x: Theme.gap
                    y: Theme.gap
                    width: parent.width - 2 * Theme.gap
                    from: root.s.center.from
                    to: root.s.center.to
                    name: root.s.center.label
                    edges: [root.s.center.left, root.s.center.right]
                    edgeAt: place => root.pane.edgeAt(place)
                    onDragged: (edge, value) => root.pane.dragEdge(edge, value)
                    onStepped: (edge, steps) => root.pane.step(edge, steps)
                }
            }
            Divider {}
            PresetRow {
                title: root.s.center.width
                caption: root.s.center.presets.note
                options: root.s.center.presets.options
                value: root.s.center.presets.value
                onChosen: value => root.pane.applyCenterPreset(value)
            }
            Repeater {
                model: root.pane.centerSliders
                TuningSlider { pane: root.pane }
            }
        }
    }
}
