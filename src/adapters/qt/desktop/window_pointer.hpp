// Where the pointer is while it is over a window of this program.
//
// Under Wayland nobody else tells. Watches all windows of the application from its making on.
// Places are those of QWindow::mapToGlobal, which under Wayland begin at the window's own corner:
// whoever compares them with places in a window has to take those from the same function. Main
// thread.
#pragma once

#include <QObject>
#include <QPointF>
#include <functional>
#include <optional>

namespace velotap {

class WindowPointer : public QObject {
  Q_OBJECT

 public:
  /// Nothing when the pointer left.
  using Moved = std::function<void(std::optional<QPointF> place)>;

  explicit WindowPointer(Moved moved, QObject* parent = nullptr);

  [[nodiscard]] bool eventFilter(QObject* object, QEvent* event) override;

 private:
  Moved moved_;
};

}  // namespace velotap
