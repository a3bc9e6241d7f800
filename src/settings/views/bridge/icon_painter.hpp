// Draws the program's symbols, and icons of applications.
//
// A symbol is an SVG file of ours named after it, in the one colour that it is asked for; the
// vectors are drawn by the processor, so a picture is the same on every machine. Main thread or
// QML's loader thread: nothing is shared.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace velotap {

/// An empty picture, and a warning, for a symbol that does not exist.
[[nodiscard]] QImage paintSymbol(const QString& name, QSize pixels, const QColor& color);

/// The icon theme's picture (or the file's, for a path), else a tile with the name's first letter
/// whose hue is the name's own.
[[nodiscard]] QImage paintApplication(const QString& icon, const QString& name, QSize pixels,
                                      bool dark);

}  // namespace velotap
