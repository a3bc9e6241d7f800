#import <AppKit/AppKit.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/mac_announcements.hpp"

namespace velotap {
namespace {

class SystemAnnouncer final : public CocoaAnnouncer {
 public:
  void announce(const std::string& message, int priority) override {
    NSString* text = foundationText(message);
    if (text == nil) return;  // a dictionary takes no nil
    NSAccessibilityPostNotificationWithUserInfo(
        NSApplication.sharedApplication, NSAccessibilityAnnouncementRequestedNotification,
        @{NSAccessibilityAnnouncementKey : text,
          NSAccessibilityPriorityKey : @(priority)});
  }
};

}  // namespace

std::unique_ptr<CocoaAnnouncer> CocoaAnnouncer::system() {
  return std::make_unique<SystemAnnouncer>();
}

}  // namespace velotap
