// Announcements over AppKit's accessibility notifications. Main thread.
#pragma once

#include <memory>

#include "platform/announcements.hpp"

namespace velotap {

/// Posts to the screen reader, which only Objective-C can.
class CocoaAnnouncer {
 public:
  virtual ~CocoaAnnouncer() = default;
  virtual void announce(const std::string& message, int priority) = 0;

  /// The announcer of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<CocoaAnnouncer> system();
};

class MacAnnouncements final : public Announcements {
 public:
  explicit MacAnnouncements(CocoaAnnouncer& announcer) : announcer_(announcer) {}
  void post(const std::string& message, AnnouncementPriority priority) override {
    // An empty announcement would silence one that is being spoken.
    if (!message.empty()) announcer_.announce(message, static_cast<int>(priority));
  }

 private:
  CocoaAnnouncer& announcer_;
};

}  // namespace velotap
