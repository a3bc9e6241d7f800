#include "adapters/qt/desktop/window_pointer.hpp"

#include <QCoreApplication>
#include <QSinglePointEvent>
#include <utility>

namespace velotap {

WindowPointer::WindowPointer(Moved moved, QObject* parent)
    : QObject(parent), moved_(std::move(moved)) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool WindowPointer::eventFilter(QObject* object, QEvent* event) {
  if (!object->isWindowType()) return false;
  switch (event->type()) {
    case QEvent::Enter:
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
      moved_(static_cast<const QSinglePointEvent*>(event)->globalPosition());
      break;
    case QEvent::Leave:
    case QEvent::Hide:
      moved_(std::nullopt);
      break;
    default:
      break;
  }
  return false;
}

}  // namespace velotap
