// One of our own symbols, in the colour of the place where it stands.
import QtQuick
import QtQuick.Window
import Velotap

Image {
    id: root
    property string symbol
    property color color: Theme.textSecondary
    property int size: Theme.glyph
    readonly property int pixels: Math.round(size * Screen.devicePixelRatio)

    width: size
    height: size
    sourceSize: Qt.size(pixels, pixels)
    source: symbol.length > 0 ? "image://glyph/" + symbol + "/" + App.hex(color) : ""
    Accessible.ignored: true
}
