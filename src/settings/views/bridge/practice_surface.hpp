// A place in a window that takes mouse buttons and tells what decides whether a click reaches it.
//
// It tells again whenever any of that may have changed, scrolling and moved windows included, and
// says so when it leaves its window. It decides nothing. Main thread.
#pragma once

#include <QQuickItem>
#include <vector>

namespace velotap {

class PracticeSurface : public QQuickItem {
  Q_OBJECT
  QML_ELEMENT

 public:
  explicit PracticeSurface(QQuickItem* parent = nullptr);
  ~PracticeSurface() override;

 signals:
  /// Numbers as the event stream has them: 0 left, 1 right, 2 middle.
  void pressedButton(int button);
  void releasedButton(int button);
  /// `ready`: the window has the keyboard, is shown, not minimised and takes the mouse, and there
  /// is a screen. The rectangle is what can be seen of the item, in coordinates of the screen.
  void placed(bool ready, bool hidden, double x, double y, double width, double height);
  void gone();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void itemChange(ItemChange change, const ItemChangeData& value) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  void follow(QQuickWindow* window);
  void refresh();
  [[nodiscard]] bool ready() const;

  std::vector<QMetaObject::Connection> connections_;
};

}  // namespace velotap
