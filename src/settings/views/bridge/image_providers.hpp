// The addresses under which QML finds pictures: image://glyph/SYMBOL/RRGGBB, and
// image://application/DARK/ICON/NAME where the parts are percent-encoded and DARK is 0 or 1.
#pragma once

#include <QQuickImageProvider>

namespace velotap {

class GlyphProvider : public QQuickImageProvider {
 public:
  GlyphProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

class ApplicationIconProvider : public QQuickImageProvider {
 public:
  ApplicationIconProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

}  // namespace velotap
