// The port for speaking to people who do not see the screen.
//
// Main thread. Without a screen reader it does nothing.
#pragma once

#include <string>

namespace velotap {

/// How urgent an announcement is; the values are what accessibility services know.
enum class AnnouncementPriority { low = 10, medium = 50, high = 90 };

class Announcements {
 public:
  virtual ~Announcements() = default;
  virtual void post(const std::string& message, AnnouncementPriority priority) = 0;
};

}  // namespace velotap
