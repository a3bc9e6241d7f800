// An application's icon, or a tile with its first letter.
import QtQuick
import QtQuick.Window
import Velotap

Image {
    property string icon
    property string name
    property int size: 32
    readonly property int pixels: Math.round(size * Screen.devicePixelRatio)

    width: size
    height: size
    sourceSize: Qt.size(pixels, pixels)
    source: "image://application/" + (App.dark ? 1 : 0) + "/" + encodeURIComponent(icon) + "/"
            + encodeURIComponent(name)
    Accessible.ignored: true
}
