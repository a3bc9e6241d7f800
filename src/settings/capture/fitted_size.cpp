#include "settings/capture/fitted_size.hpp"

#include <algorithm>

namespace velotap {
namespace {

void extend(QSizeF& reach, const QQuickItem& item, bool scrolls) {
  if (!item.isVisible() || item.opacity() == 0) return;
  const QRectF place = item.mapRectToScene(item.boundingRect());
  if (!place.isEmpty()) {
    reach.setWidth(std::max(reach.width(), place.right()));
    if (!scrolls) reach.setHeight(std::max(reach.height(), place.bottom()));
  }
  for (const QQuickItem* child : item.childItems()) {
    extend(reach, *child, scrolls || item.inherits("QQuickFlickable"));
  }
}

}  // namespace

QSize fittedSize(const QQuickItem& root) {
  QSizeF reach;
  extend(reach, root, false);
  return reach.toSize();  // text is measured in fractions of points
}

}  // namespace velotap
