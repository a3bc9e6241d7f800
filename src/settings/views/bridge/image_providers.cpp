#include "settings/views/bridge/image_providers.hpp"

#include <QUrl>

#include "settings/views/bridge/icon_painter.hpp"

namespace velotap {
namespace {

constexpr int kUsualSide = 32;

QSize pixelsOf(const QSize& requested, QSize* size) {
  const QSize pixels = requested.isEmpty() ? QSize(kUsualSide, kUsualSide) : requested;
  if (size != nullptr) *size = pixels;
  return pixels;
}

}  // namespace

QImage GlyphProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
  const QStringList parts = id.split(u'/');
  return paintSymbol(parts.value(0), pixelsOf(requested, size), QColor(u'#' + parts.value(1)));
}

QImage ApplicationIconProvider::requestImage(const QString& id, QSize* size,
                                             const QSize& requested) {
  const QStringList parts = id.split(u'/');
  const auto part = [&parts](int i) {
    return QUrl::fromPercentEncoding(parts.value(i).toLatin1());
  };
  return paintApplication(part(1), part(2), pixelsOf(requested, size), part(0) == u"1");
}

}  // namespace velotap
