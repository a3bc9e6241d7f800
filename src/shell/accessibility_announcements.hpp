// Speaks confirmations to people who do not see the screen.
//
// Main thread.
#pragma once

#include <string>

#include "platform/announcements.hpp"

namespace velotap {

class AccessibilityAnnouncements {
 public:
  explicit AccessibilityAnnouncements(Announcements& announcements)
      : announcements_(announcements) {}

  /// The announcements of this process, over the current shell platform.
  [[nodiscard]] static AccessibilityAnnouncements& shared();

  /// An empty message is not spoken.
  void post(const std::string& message, AnnouncementPriority priority) {
    if (!message.empty()) announcements_.post(message, priority);
  }

 private:
  Announcements& announcements_;
};

}  // namespace velotap
