// Text in one of the few kinds that the windows use. It wraps; it never hides a part of itself. What
// is not seen is not read either: assistive programs would find words of panes behind this one.
import QtQuick
import Velotap

Text {
    id: root
    property string kind: "body"   // body, strong, caption, heading, headline, title, mono
    property bool secondary: kind === "caption"
    property bool silent: false    // somebody else says it to assistive programs

    font.family: kind === "mono" ? Theme.familyMono : Theme.family
    font.pixelSize: kind === "caption" || kind === "mono" ? Theme.sizeCaption
                  : kind === "heading" ? Theme.sizeHeading
                  : kind === "headline" ? Theme.sizeHeadline
                  : kind === "title" ? Theme.sizeTitle : Theme.sizeBody
    font.weight: kind === "title" ? Font.Bold
               : kind === "heading" || kind === "headline" ? Font.DemiBold
               : kind === "strong" ? Font.Medium : Font.Normal
    color: secondary ? Theme.textSecondary : Theme.text
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    renderType: Text.NativeRendering
    onLineCountChanged: lineHeight = lineCount > 1 ? 1.12 : 1   // as a binding it would loop
    Accessible.role: kind === "heading" || kind === "headline" || kind === "title"
                     ? Accessible.Heading : Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: silent || !visible || text.length === 0
}
