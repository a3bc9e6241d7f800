#import <AppKit/AppKit.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/mac_updates.hpp"
#include "adapters/macos/shell/sparkle_classes.hpp"

@interface VelotapUpdaterObserver : NSObject
- (instancetype)initWithUpdater:(NSObject*)updater changed:(std::function<void()>)changed;
- (void)stop;
@end

@implementation VelotapUpdaterObserver {
  NSObject* _updater;
  std::function<void()> _changed;
}

- (instancetype)initWithUpdater:(NSObject*)updater changed:(std::function<void()>)changed {
  self = [super init];
  if (self != nil) {
    _updater = updater;
    _changed = std::move(changed);
    for (NSString* key in [VelotapUpdaterObserver keys]) {
      [updater addObserver:self forKeyPath:key options:0 context:nullptr];
    }
  }
  return self;
}

+ (NSArray<NSString*>*)keys {
  return @[ @"automaticallyChecksForUpdates", @"lastUpdateCheckDate" ];
}

- (void)stop {
  for (NSString* key in [VelotapUpdaterObserver keys]) {
    [_updater removeObserver:self forKeyPath:key context:nullptr];
  }
  _updater = nil;
}

- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
  static_cast<void>(path);
  static_cast<void>(object);
  static_cast<void>(change);
  static_cast<void>(context);
  _changed();
}

@end

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
    [controller_.updater checkForUpdates];
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
    VelotapUpdaterObserver* observer =
        [[VelotapUpdaterObserver alloc] initWithUpdater:controller_.updater
                                                changed:std::move(changed)];
    return Observation([observer] { [observer stop]; });
  }

 private:
  id<VelotapSparkleController> controller_ = nil;  // lives as long as updates are wanted
};

}  // namespace

std::unique_ptr<CocoaUpdater> CocoaUpdater::system() {
  return std::make_unique<SparkleUpdater>();
}

}  // namespace velotap
