// Speaks to a screen reader without any window that a person could see.
//
// Qt 6.4 has no event for announcements. Screen readers do act on a notification that starts to
// show, so there is one, as the root of a window that is never shown: one for the program, because
// one in each window would be heard once for each. It costs nothing while no screen reader asks for
// the program's windows. Main thread, below the application object.
#pragma once

#include <QAccessible>
#include <QTimer>
#include <QWindow>
#include <string>

#include "platform/announcements.hpp"

namespace velotap {

class UnseenAnnouncer final : public QWindow, public Announcements {
 public:
  UnseenAnnouncer();
  ~UnseenAnnouncer() override;
  UnseenAnnouncer(const UnseenAnnouncer&) = delete;
  UnseenAnnouncer& operator=(const UnseenAnnouncer&) = delete;

  /// Nothing is more urgent than anything else: readers decide that themselves.
  void post(const std::string& message, AnnouncementPriority) override;
  [[nodiscard]] const QString& text() const noexcept { return text_; }

  [[nodiscard]] QAccessibleInterface* accessibleRoot() const override;

 private:
  void tell(QAccessible::Event event) const;

  QString text_;
  QTimer hides_;
  mutable QAccessibleInterface* root_ = nullptr;  // belongs to Qt's register of interfaces
};

}  // namespace velotap
