#include "settings/views/bridge/gesture_picture.hpp"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

namespace velotap {
namespace {

constexpr double kPadProportion = 1.42;
constexpr double kMouseProportion = 0.56;
// Fingers differ in length.
constexpr std::array<double, 5> kBend = {0.10, 0.0, 0.05, 0.18, 0.28};

QColor faded(QColor color, double alpha) {
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

void paintArrow(QPainter& painter, QPointF from, QPointF to, double head) {
  painter.drawLine(from, to);
  const double angle = std::atan2(to.y() - from.y(), to.x() - from.x());
  for (const double turn : {2.6, -2.6}) {
    painter.drawLine(to,
                     to + QPointF(head * std::cos(angle + turn), head * std::sin(angle + turn)));
  }
}

}  // namespace

GesturePainting::GesturePainting(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  connect(this, &GesturePainting::changed, this, [this] { update(); });
}

void GesturePainting::paint(QPainter* painter) {
  painter->setRenderHint(QPainter::Antialiasing);
  const QRectF shape = body();
  paintBody(*painter, shape);
  painter->save();
  QPainterPath clip;
  const double corner = mouse_ ? shape.width() / 2 : shape.height() * 0.09;
  clip.addRoundedRect(shape.adjusted(1, 1, -1, -1), corner, corner);
  painter->setClipPath(clip);
  paintFingers(*painter, shape);
  painter->restore();
  paintMovement(*painter, shape);
}

QRectF GesturePainting::body() const {
  const double proportion = mouse_ ? kMouseProportion : kPadProportion;
  const double high = std::min(height() - 4, (width() - 4) / proportion);
  const QSizeF size(high * proportion, high);
  return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

QPointF GesturePainting::tip(const QRectF& shape, int finger) const {
  const double place = finger - (fingers_ - 1) / 2.0;
  const double spacing = shape.width() * (mouse_ ? 0.25 : 0.21);
  const double rise = mouse_ ? 0.24 : 0.36;
  const double bend = fingers_ == 1 ? 0 : kBend[static_cast<std::size_t>(finger) % kBend.size()];
  return {shape.center().x() + place * spacing,
          shape.top() + shape.height() * (rise + bend * (mouse_ ? 0.5 : 0.8))};
}

void GesturePainting::paintBody(QPainter& painter, const QRectF& shape) const {
  QLinearGradient gradient(shape.topLeft(), shape.bottomLeft());
  gradient.setColorAt(0, surface_.lighter(103));
  gradient.setColorAt(1, surface_.darker(104));
  painter.setPen(QPen(edge_, 1));
  painter.setBrush(gradient);
  const double corner = mouse_ ? shape.width() / 2 : shape.height() * 0.09;
  painter.drawRoundedRect(shape.adjusted(.5, .5, -.5, -.5), corner, corner);
}

void GesturePainting::paintFingers(QPainter& painter, const QRectF& shape) const {
  const double radius = shape.width() * (mouse_ ? 0.095 : 0.068);
  for (int i = 0; i < fingers_; ++i) {
    painter.save();
    painter.translate(tip(shape, i));
    painter.rotate((i - (fingers_ - 1) / 2.0) * 7);
    QLinearGradient gradient(0, -radius * 1.3, 0, shape.height() * .72);
    gradient.setColorAt(0, finger_);
    gradient.setColorAt(1, faded(finger_, 0.25));
    painter.setPen(QPen(edge_, 1));
    painter.setBrush(gradient);
    painter.drawRoundedRect(
        QRectF(-radius * 1.1, -radius * 1.45, radius * 2.2, shape.height() * 1.3), radius * 1.1,
        radius * 1.1);
    painter.restore();
  }
  const bool presses = kind_ == QStringLiteral("click");
  const bool taps = kind_ == QStringLiteral("tap");
  for (int i = 0; i < fingers_; ++i) {
    const QPointF at = tip(shape, i);
    if (presses || taps) {
      QPen pen(accent_, 1.2);
      if (taps) pen.setDashPattern({2.4, 2.4});
      painter.setPen(pen);
      painter.setBrush(faded(accent_, presses ? 0.28 : 0.14));
      painter.drawEllipse(at, radius * 1.25, radius * 1.25);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent_);
    painter.drawEllipse(at, radius * .55, radius * .55);
  }
}

void GesturePainting::paintMovement(QPainter& painter, const QRectF& shape) const {
  painter.setPen(QPen(accent_, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  const double side = shape.height() * 0.09;
  if (kind_ == QStringLiteral("pinch")) {
    const QPointF first = tip(shape, 0);
    const QPointF last = tip(shape, fingers_ - 1);
    const QPointF away(shape.width() * 0.2, 0);
    const QPointF start(shape.width() * 0.11, 0);
    paintArrow(painter, first - start, first - start - away, side);
    paintArrow(painter, last + start, last + start + away, side);
  } else if (kind_ == QStringLiteral("rotate")) {
    const QPointF middle = (tip(shape, 0) + tip(shape, fingers_ - 1)) / 2;
    const double radius = shape.height() * 0.2;
    painter.drawArc(QRectF(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius),
                    35 * 16, 110 * 16);
    const double end = 35 * M_PI / 180;
    const QPointF at(middle.x() + radius * std::cos(end), middle.y() - radius * std::sin(end));
    paintArrow(painter, at - QPointF(side * .5, side * .6), at, side);
  } else if (kind_ == QStringLiteral("swipe")) {
    const double y = shape.bottom() - shape.height() * 0.2;
    const double reach = shape.width() * 0.36;
    paintArrow(painter, {shape.center().x() - 3, y}, {shape.center().x() - reach, y}, side);
    paintArrow(painter, {shape.center().x() + 3, y}, {shape.center().x() + reach, y}, side);
  }
}

}  // namespace velotap
