#include "adapters/qt/desktop/unseen_announcer.hpp"

#include <QAccessible>
#include <QAccessibleObject>
#include <QGuiApplication>

namespace velotap {
namespace {

// Long enough for a reader that asks what it is that shows.
constexpr int kShownMs = 4000;

class Notification final : public QAccessibleObject {
 public:
  explicit Notification(UnseenAnnouncer* announcer)
      : QAccessibleObject(announcer), announcer_(*announcer) {}

  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(qGuiApp);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Notification; }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = announcer_.text().isEmpty();
    return state;
  }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? announcer_.text() : QString();
  }

 private:
  const UnseenAnnouncer& announcer_;
};

}  // namespace

UnseenAnnouncer::UnseenAnnouncer() {
  hides_.setSingleShot(true);
  hides_.setInterval(kShownMs);
  connect(&hides_, &QTimer::timeout, this, [this] {
    text_.clear();
    tell(QAccessible::ObjectHide);
  });
}

UnseenAnnouncer::~UnseenAnnouncer() {
  if (root_ != nullptr) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(root_));
}

QAccessibleInterface* UnseenAnnouncer::accessibleRoot() const {
  if (root_ == nullptr) {
    root_ = new Notification(const_cast<UnseenAnnouncer*>(this));
    QAccessible::registerAccessibleInterface(root_);
  }
  return root_;
}

void UnseenAnnouncer::post(const std::string& message, AnnouncementPriority) {
  text_ = QString::fromStdString(message);
  if (!QAccessible::isActive()) return;
  // Hidden first: what shows already cannot start to.
  tell(QAccessible::ObjectHide);
  tell(QAccessible::NameChanged);
  tell(QAccessible::ObjectShow);
  hides_.start();
}

void UnseenAnnouncer::tell(QAccessible::Event type) const {
  QAccessibleEvent event(accessibleRoot(), type);
  QAccessible::updateAccessibility(&event);
}

}  // namespace velotap
