// The one place that knows sizes, type and colours. Views name what a thing is, never how it looks.
pragma Singleton
import QtQuick
import Velotap

QtObject {
    readonly property var colors: App.palette

    // surfaces
    readonly property color window: colors.window
    readonly property color bar: colors.bar
    readonly property color card: colors.card
    readonly property color sunken: colors.sunken
    readonly property color hover: colors.hover
    readonly property color press: colors.press
    readonly property color chosen: colors.chosen
    readonly property color button: colors.button
    readonly property color scrim: colors.scrim
    readonly property color clear: "transparent"
    // outlines
    readonly property color line: colors.line
    readonly property color hair: colors.hair
    readonly property color edge: colors.edge
    readonly property color buttonLine: colors.buttonLine
    // text and marks
    readonly property color text: colors.text
    readonly property color textSecondary: colors.textSecondary
    readonly property color textTertiary: colors.textTertiary   // marks beside text, never text
    readonly property color accent: colors.accent
    readonly property color fill: colors.fill
    readonly property color fillText: colors.fillText
    readonly property color accentSoft: colors.accentSoft
    readonly property color track: colors.track
    readonly property color knob: colors.knob
    // states
    readonly property color good: colors.good
    readonly property color goodSoft: colors.goodSoft
    readonly property color warning: colors.warning
    readonly property color warningSoft: colors.warningSoft
    readonly property color danger: colors.danger
    readonly property color neutralSoft: colors.neutralSoft

    function tone(name) {
        return name === "good" ? good : name === "warning" ? warning : name === "danger" ? danger
             : name === "accent" ? accent : name === "text" ? text : textSecondary
    }
    /// The ground of a mark in its tone.
    function tint(name) {
        const c = tone(name)
        return Qt.rgba(c.r, c.g, c.b, 0.12)
    }
    function toneSoft(name) {
        return name === "good" ? goodSoft : name === "warning" || name === "danger" ? warningSoft
             : name === "accent" ? accentSoft : neutralSoft
    }

    // space, in steps of four
    readonly property int tight: 2
    readonly property int small: 4
    readonly property int snug: 8
    readonly property int medium: 12
    readonly property int gap: 16
    readonly property int wide: 20
    readonly property int large: 24
    readonly property int hairline: 1

    // corners
    readonly property int cornerSmall: 6
    readonly property int corner: 8
    readonly property int cornerLarge: 12
    readonly property int cornerSheet: 14

    // type; sizes follow the desktop's text scale
    readonly property string family: App.fontFamily
    readonly property string familyMono: App.monoFamily
    readonly property real scale: App.textScale
    readonly property int sizeCaption: Math.round(12 * scale)
    readonly property int sizeBody: Math.round(13 * scale)
    readonly property int sizeHeading: Math.round(13 * scale)
    readonly property int sizeHeadline: Math.round(15 * scale)
    readonly property int sizeTitle: Math.round(20 * scale)
    readonly property int sizeTab: Math.round(11 * scale)

    // marks
    readonly property int glyphSmall: Math.round(14 * scale)
    readonly property int glyph: Math.round(16 * scale)
    readonly property int glyphMedium: Math.round(18 * scale)
    readonly property int glyphLarge: Math.round(22 * scale)
    readonly property int glyphHero: Math.round(28 * scale)

    // controls
    readonly property int controlHeight: Math.round(30 * scale)
    readonly property int fieldHeight: Math.round(34 * scale)
    readonly property int rowHeight: Math.round(44 * scale)
    readonly property int badge: 36
    readonly property int badgeLarge: 40
    readonly property int hero: 56
    readonly property int logo: 72
    readonly property int logoGlyph: 44
    readonly property int logoCorner: 18
    readonly property int practiceHeight: 148
    readonly property int cardWidth: 200
    readonly property int wordsWidth: Math.round(220 * scale)   // below it a title wraps too often
    readonly property int sheetTop: 84    // under the tabs
    readonly property int sheetWidth: 420
    readonly property int sheetWide: 640
    readonly property int paneWidth: 720

    readonly property int quick: App.still ? 0 : 140
}
