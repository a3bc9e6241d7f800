#import <AppKit/AppKit.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/mac_alerts.hpp"

namespace velotap {
namespace {

class SystemAlertPanel final : public CocoaAlertPanel {
 public:
  long runModal(const AlertRequest& request) override {
    NSAlert* alert = [NSAlert new];
    alert.messageText = foundationText(request.message);
    alert.informativeText = foundationText(request.informativeText);
    for (const std::string& button : request.buttons) {
      [alert addButtonWithTitle:foundationText(button)];
    }
    // Without a Dock place the program would show its alert behind everything else.
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
    return [alert runModal];
  }

  long firstButton() const override { return NSAlertFirstButtonReturn; }
};

}  // namespace

std::unique_ptr<CocoaAlertPanel> CocoaAlertPanel::system() {
  return std::make_unique<SystemAlertPanel>();
}

}  // namespace velotap
