// A place in a window that takes mouse buttons and tells where on the screen it is.
//
// The place counts only while a person can see and use it: its window active, shown and not
// minimised, and the item itself visible. It tells again whenever that or its rectangle changes,
// and tells that it is gone when it goes. Main thread.
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
  /// In coordinates of the screen; `id` tells surfaces apart.
  void placed(int id, bool present, double x, double y, double width, double height);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void itemChange(ItemChange change, const ItemChangeData& value) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  void follow(QQuickWindow* window);
  void refresh();
  [[nodiscard]] bool usable() const;

  int id_;
  std::vector<QMetaObject::Connection> connections_;
};

}  // namespace velotap
