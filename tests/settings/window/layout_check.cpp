#include "layout_check.hpp"

#include <QRectF>
#include <algorithm>
#include <vector>

namespace velotap::test {
namespace {

// Text is placed on whole pixels and measured in fractions of them.
constexpr double kTolerance = 1.01;

struct Thing {
  const QQuickItem* item;
  QRectF seen;   // of the whole, what is not clipped
  QRectF whole;  // in the window
  QString name;
  bool overlaid;  // belongs to a popup
};

bool isText(const QQuickItem* item) {
  return item->inherits("QQuickText");
}

bool isControl(const QQuickItem* item) {
  return item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField") ||
         item->inherits("QQuickTextArea") || item->inherits("QQuickSlider");
}

bool isPicture(const QQuickItem* item) {
  return item->inherits("QQuickImage") && !item->property("source").toString().isEmpty();
}

// Where the letters are: a label is often wider than its text.
QRectF extent(const QQuickItem* item) {
  const QRectF box(0, 0, item->width(), item->height());
  if (!isText(item)) return box;
  const QSizeF painted(item->property("contentWidth").toReal(),
                       item->property("contentHeight").toReal());
  const int alignment = item->property("horizontalAlignment").toInt();
  const double left = item->property("leftPadding").toReal();
  const double room = box.width() - left - item->property("rightPadding").toReal();
  double x = left;
  if (alignment == Qt::AlignHCenter) x += (room - painted.width()) / 2;
  if (alignment == Qt::AlignRight) x += room - painted.width();
  return {QPointF(x, item->property("topPadding").toReal()), painted};
}

QString nameOf(const QQuickItem* item) {
  for (const char* property : {"text", "title", "name", "source"}) {
    const QString value = item->property(property).toString();
    if (!value.isEmpty()) return QStringLiteral("\"%1\"").arg(value.left(60));
  }
  return QString::fromLatin1(item->metaObject()->className());
}

void collect(const QQuickItem* item, QRectF clip, bool overlaid, std::vector<Thing>& things) {
  if (!item->isVisible() || item->opacity() == 0) return;
  overlaid = overlaid || item->inherits("QQuickOverlay");
  const QRectF box = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
  if (item->clip()) clip = clip.intersected(box);
  if ((isText(item) && !item->property("text").toString().isEmpty()) || isControl(item) ||
      isPicture(item)) {
    const QRectF whole = item->mapRectToScene(extent(item));
    const QRectF seen = whole.intersected(clip);
    if (!seen.isEmpty()) things.push_back({item, seen, whole, nameOf(item), overlaid});
  }
  for (const QQuickItem* child : item->childItems()) collect(child, clip, overlaid, things);
}

QString placed(const Thing& thing) {
  return QStringLiteral("%1 at %2,%3 %4 x %5")
      .arg(thing.name)
      .arg(thing.whole.x())
      .arg(thing.whole.y())
      .arg(thing.whole.width())
      .arg(thing.whole.height());
}

bool overlap(const Thing& a, const Thing& b) {
  const QRectF common = a.seen.intersected(b.seen);
  return common.width() > kTolerance && common.height() > kTolerance;
}

bool holds(const QRectF& outer, const QRectF& inner) {
  return inner.left() >= outer.left() - kTolerance && inner.right() <= outer.right() + kTolerance &&
         inner.top() >= outer.top() - kTolerance && inner.bottom() <= outer.bottom() + kTolerance;
}

// The cards and controls that a thing stands in have to hold all of it.
void checkHolders(const Thing& thing, QStringList& problems) {
  for (const QQuickItem* p = thing.item->parentItem(); p != nullptr; p = p->parentItem()) {
    if (p->clip()) return;  // scrolled
    if (!p->inherits("QQuickRectangle") && !isControl(p)) continue;
    const QRectF box = p->mapRectToScene(QRectF(0, 0, p->width(), p->height()));
    if (!holds(box, thing.whole)) {
      problems += QStringLiteral("%1 leaves %2 at %3,%4 %5 x %6")
                      .arg(placed(thing), nameOf(p))
                      .arg(box.x())
                      .arg(box.y())
                      .arg(box.width())
                      .arg(box.height());
    }
  }
}

}  // namespace

QStringList layoutProblems(QQuickItem* root) {
  const QRectF window(0, 0, root->width(), root->height());
  std::vector<Thing> things;
  // What lies further down is scrolled to; to the sides nothing is.
  collect(root, window.adjusted(-1e6, -1e6, 1e6, 1e6), false, things);
  QStringList problems;
  for (const Thing& thing : things) {
    if (thing.whole.left() < -kTolerance || thing.whole.right() > window.right() + kTolerance) {
      problems += placed(thing) + QStringLiteral(" leaves the window");
    }
    if (thing.seen.left() > thing.whole.left() + kTolerance ||
        thing.seen.right() < thing.whole.right() - kTolerance) {
      problems += placed(thing) + QStringLiteral(" is cut off at a side");
    }
    checkHolders(thing, problems);
  }
  for (auto a = things.begin(); a != things.end(); ++a) {
    for (auto b = std::next(a); b != things.end(); ++b) {
      if (a->overlaid != b->overlaid || !overlap(*a, *b)) continue;
      if (a->item->isAncestorOf(b->item) || b->item->isAncestorOf(a->item)) continue;
      problems += QStringLiteral("%1 is over %2").arg(placed(*a), placed(*b));
    }
  }
  return problems;
}

}  // namespace velotap::test
