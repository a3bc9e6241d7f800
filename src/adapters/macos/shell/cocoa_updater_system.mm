#import <AppKit/AppKit.h>

#include <utility>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/cocoa/key_path_observer.hpp"
#include "adapters/macos/shell/mac_updates.hpp"
#include "adapters/macos/shell/sparkle_classes.hpp"

namespace velotap {
namespace {

Class controllerClass() {
  NSString* folder = NSBundle.mainBundle.privateFrameworksPath;
  if (folder == nil) return nil;
  NSBundle* framework =
      [NSBundle bundleWithPath:[folder stringByAppendingPathComponent:@"Sparkle.framework"]];
  if (framework == nil || ![framework load]) return nil;
  return NSClassFromString(@"SPUStandardUpdaterController");
}

class SparkleUpdater final : public CocoaUpdater {
 public:
  std::string feed() override {
    id address = [NSBundle.mainBundle objectForInfoDictionaryKey:@"SUFeedURL"];
    if (![address isKindOfClass:[NSString class]]) return {};
    return textOf(address).value_or("");
  }

  bool start() override {
    Class controller = controllerClass();
    if (controller == nil) return false;
    id<VelotapSparkleController> made = [controller alloc];
    controller_ = [made initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil];
    return controller_ != nil;
  }

  void checkForUpdates() override {
    [NSApplication.sharedApplication activateIgnoringOtherApps:YES];
    [controller_ checkForUpdates:nil];
  }

  bool automaticallyChecks() override { return controller_.updater.automaticallyChecksForUpdates; }

  void setAutomaticallyChecks(bool on) override {
    controller_.updater.automaticallyChecksForUpdates = on;
  }

  std::optional<double> lastCheck() override {
    NSDate* date = controller_.updater.lastUpdateCheckDate;
    if (date == nil) return std::nullopt;
    return date.timeIntervalSince1970;
  }

  Observation observe(std::function<void()> changed) override {
    return observeKeyPaths(controller_.updater,
                           @[ @"automaticallyChecksForUpdates", @"lastUpdateCheckDate" ],
                           std::move(changed));
  }

 private:
  id<VelotapSparkleController> controller_ = nil;  // lives as long as updates are wanted
};

}  // namespace

std::unique_ptr<CocoaUpdater> CocoaUpdater::system() {
  return std::make_unique<SparkleUpdater>();
}

}  // namespace velotap
