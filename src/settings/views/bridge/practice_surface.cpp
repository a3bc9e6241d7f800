#include "settings/views/bridge/practice_surface.hpp"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>

namespace velotap {
namespace {

int numberOf(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return 0;
    case Qt::RightButton:
      return 1;
    case Qt::MiddleButton:
      return 2;
    default:
      return 3;
  }
}

}  // namespace

PracticeSurface::PracticeSurface(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::AllButtons);
}

PracticeSurface::~PracticeSurface() {
  for (const auto& connection : connections_) disconnect(connection);
}

void PracticeSurface::mousePressEvent(QMouseEvent* event) {
  emit pressedButton(numberOf(event->button()));
}

void PracticeSurface::mouseReleaseEvent(QMouseEvent* event) {
  emit releasedButton(numberOf(event->button()));
}

void PracticeSurface::itemChange(ItemChange change, const ItemChangeData& value) {
  QQuickItem::itemChange(change, value);
  if (change == ItemSceneChange) follow(value.window);
  if (change == ItemVisibleHasChanged) refresh();
}

void PracticeSurface::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  refresh();
}

void PracticeSurface::follow(QQuickWindow* window) {
  for (const auto& connection : connections_) disconnect(connection);
  connections_.clear();
  if (window == nullptr) {
    emit gone();
    return;
  }
  const auto again = [this] { refresh(); };
  connections_ = {connect(window, &QWindow::activeChanged, this, again),
                  connect(window, &QWindow::visibilityChanged, this, again),
                  connect(window, &QWindow::xChanged, this, again),
                  connect(window, &QWindow::yChanged, this, again),
                  connect(window, &QWindow::widthChanged, this, again),
                  connect(window, &QWindow::heightChanged, this, again),
                  connect(window, &QWindow::screenChanged, this, again),
                  // Scrolling moves the item without changing its own geometry.
                  connect(window, &QQuickWindow::afterAnimating, this, again)};
  refresh();
}

bool PracticeSurface::ready() const {
  const QQuickWindow* holder = window();
  return holder->isActive() && holder->isVisible() &&
         (holder->windowStates() & Qt::WindowMinimized) == 0 &&
         (holder->flags() & Qt::WindowTransparentForInput) == 0 &&
         !QGuiApplication::screens().isEmpty();
}

void PracticeSurface::refresh() {
  if (window() == nullptr) return;
  const QRectF inWindow = mapRectToScene(boundingRect()) &
                          QRectF(QPointF(), QSizeF(window()->width(), window()->height()));
  const QPointF corner = QPointF(window()->mapToGlobal(QPoint())) + inWindow.topLeft();
  emit placed(ready(), !isVisible(), corner.x(), corner.y(), inWindow.width(), inWindow.height());
}

}  // namespace velotap
