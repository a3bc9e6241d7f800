#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#include "adapters/macos/cocoa/cocoa_appearance.hpp"
#include "adapters/macos/cocoa/key_path_observer.hpp"

namespace velotap {
namespace {

class SystemAppearance final : public CocoaAppearance {
 public:
  bool dark() override {
    NSAppearanceName closest = [NSApplication.sharedApplication.effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [closest isEqualToString:NSAppearanceNameDarkAqua];
  }

  bool highContrast() override {
    return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
  }

  Observation observe(std::function<void()> changed) override {
    NSNotificationCenter* center = NSWorkspace.sharedWorkspace.notificationCenter;
    id<NSObject> contrast =
        [center addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                            object:nil
                             queue:NSOperationQueue.mainQueue
                        usingBlock:^(NSNotification*) {
                          changed();
                        }];
    // Shared, because what ends an observation must be copyable and an observation is not.
    auto colours = std::make_shared<Observation>(observeKeyPaths(
        NSApplication.sharedApplication, @[ @"effectiveAppearance" ], std::move(changed)));
    return Observation([center, contrast, colours] {
      [center removeObserver:contrast];
      *colours = {};
    });
  }
};

}  // namespace

std::unique_ptr<CocoaAppearance> CocoaAppearance::system() {
  return std::make_unique<SystemAppearance>();
}

}  // namespace velotap
