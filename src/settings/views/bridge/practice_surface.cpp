#include "settings/views/bridge/practice_surface.hpp"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

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

QRectF pointerCoordinates(const QRectF& global, QPointF screenCorner, double ratio,
                          bool countsPixels) {
  if (!countsPixels) return global;
  return {screenCorner + (global.topLeft() - screenCorner) * ratio, global.size() * ratio};
}

PracticeSurface::PracticeSurface(QQuickItem* parent) : QQuickItem(parent) {
  setAcceptedMouseButtons(Qt::AllButtons);
}

PracticeSurface::~PracticeSurface() {
  forget();
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

void PracticeSurface::forget() {
  for (const auto& connection : connections_) disconnect(connection);
  connections_.clear();
  if (followed_) followed_->removeEventFilter(this);
  followed_.clear();
  told_.reset();
}

void PracticeSurface::follow(QQuickWindow* window) {
  forget();
  if (window == nullptr) {
    emit gone();
    return;
  }
  followed_ = window;
  window->installEventFilter(this);
  const auto again = [this] { refresh(); };
  connections_ = {connect(window, &QWindow::activeChanged, this, again),
                  connect(window, &QWindow::visibilityChanged, this, again),
                  connect(window, &QWindow::xChanged, this, again),
                  connect(window, &QWindow::yChanged, this, again),
                  connect(window, &QWindow::widthChanged, this, again),
                  connect(window, &QWindow::heightChanged, this, again),
                  connect(window, &QWindow::screenChanged, this, again),
                  connect(qGuiApp, &QGuiApplication::screenAdded, this, again),
                  connect(qGuiApp, &QGuiApplication::screenRemoved, this, again),
                  // Scrolling moves the item without changing its own geometry.
                  connect(window, &QQuickWindow::afterAnimating, this, again)};
  refresh();
}

// Windows tell by events alone that nothing of them can be seen any more, or something again.
bool PracticeSurface::eventFilter(QObject* window, QEvent* event) {
  const bool decides = event->type() == QEvent::Expose || event->type() == QEvent::Close ||
                       event->type() == QEvent::WindowStateChange;
  const bool taken = QQuickItem::eventFilter(window, event);
  if (decides) QMetaObject::invokeMethod(this, &PracticeSurface::refresh, Qt::QueuedConnection);
  return taken;
}

QRectF PracticeSurface::visibleInWindow() const {
  QRectF seen = mapRectToScene(boundingRect()) &
                QRectF(QPointF(), QSizeF(window()->width(), window()->height()));
  for (const QQuickItem* above = parentItem(); above != nullptr; above = above->parentItem()) {
    if (above->clip()) seen &= above->mapRectToScene(above->boundingRect());
  }
  return seen;
}

SurfaceFacts PracticeSurface::facts() const {
  const QQuickWindow* holder = window();
  const QScreen* screen = holder->screen();
  const QRectF inWindow = visibleInWindow();
  const QRectF global = inWindow.translated(holder->mapToGlobal(QPoint()));
  return {
      .windowIsActive = holder->isActive(),
      .windowIsVisible = holder->isVisible(),
      .windowIsMinimized = (holder->windowStates() & Qt::WindowMinimized) != 0,
      .windowIgnoresMouse = (holder->flags() & Qt::WindowTransparentForInput) != 0,
      .windowIsCovered = !holder->isExposed(),
      .isHidden = !isVisible() || inWindow.isEmpty(),
      .hasScreen = screen != nullptr,
      .visible = pointerCoordinates(
          global, screen == nullptr ? QPointF() : QPointF(screen->geometry().topLeft()),
          holder->devicePixelRatio(), QGuiApplication::platformName() == QStringLiteral("xcb"))};
}

void PracticeSurface::refresh() {
  if (window() == nullptr) return;
  const SurfaceFacts now = facts();
  if (told_ == now) return;
  told_ = now;
  emit placed(now);
}

}  // namespace velotap
