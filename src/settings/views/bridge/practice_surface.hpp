// A place in a window that takes mouse buttons and tells what decides whether a click reaches it.
//
// It tells again whenever any of that changed, scrolling and moved windows included, and says so
// when it leaves its window. It decides nothing. Main thread.
#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRectF>
#include <optional>
#include <vector>

namespace velotap {

/// What can be said of a practice surface at one moment.
class SurfaceFacts {
  Q_GADGET

 public:
  bool windowIsActive = false;
  bool windowIsVisible = false;
  bool windowIsMinimized = false;
  bool windowIgnoresMouse = false;
  bool windowIsCovered = false;  ///< as far as the window system tells
  bool isHidden = false;         ///< itself or what it lies in
  bool hasScreen = false;
  /// What is neither clipped nor outside of the window, in the pointer's coordinates; see
  /// pointerCoordinates.
  QRectF visible;
  friend bool operator==(const SurfaceFacts&, const SurfaceFacts&) = default;
};

/// Places on screen as whoever asks for the pointer's place gets it. X servers count real pixels
/// from the screen's corner, everybody else what windows are measured in. `ratio`: pixels to each
/// of those.
[[nodiscard]] QRectF pointerCoordinates(const QRectF& global, QPointF screenCorner, double ratio,
                                        bool countsPixels);

class PracticeSurface : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit PracticeSurface(QQuickItem* parent = nullptr);
  ~PracticeSurface() override;

  [[nodiscard]] bool eventFilter(QObject* window, QEvent* event) override;

 signals:
  /// Numbers as the event stream has them: 0 left, 1 right, 2 middle.
  void pressedButton(int button);
  void releasedButton(int button);
  void placed(const velotap::SurfaceFacts& facts);
  void gone();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void itemChange(ItemChange change, const ItemChangeData& value) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  void follow(QQuickWindow* window);
  void forget();
  void refresh();
  [[nodiscard]] SurfaceFacts facts() const;
  [[nodiscard]] QRectF visibleInWindow() const;

  QPointer<QQuickWindow> followed_;
  std::vector<QMetaObject::Connection> connections_;
  std::optional<SurfaceFacts> told_;
};

}  // namespace velotap
