#import <Foundation/Foundation.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/preferences/preferences_changes.hpp"

@interface VelotapDefaultsObserver : NSObject
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults
                            keys:(NSArray<NSString*>*)keys
                         changed:(std::function<void()>)changed;
- (void)stop;
@end

@implementation VelotapDefaultsObserver {
  NSUserDefaults* _defaults;
  NSArray<NSString*>* _keys;
  std::function<void()> _changed;
}

- (instancetype)initWithDefaults:(NSUserDefaults*)defaults
                            keys:(NSArray<NSString*>*)keys
                         changed:(std::function<void()>)changed {
  self = [super init];
  if (self != nil) {
    _defaults = defaults;
    _keys = keys;
    _changed = std::move(changed);
    for (NSString* key in keys) {
      [defaults addObserver:self forKeyPath:key options:0 context:nullptr];
    }
  }
  return self;
}

- (void)stop {
  for (NSString* key in _keys) [_defaults removeObserver:self forKeyPath:key context:nullptr];
  _keys = nil;
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

// A suite that has the program's own name is refused: that domain is the standard one.
NSUserDefaults* defaultsOf(NSString* domain) {
  if ([domain isEqualToString:NSBundle.mainBundle.bundleIdentifier]) {
    return NSUserDefaults.standardUserDefaults;
  }
  return [[NSUserDefaults alloc] initWithSuiteName:domain];
}

NSArray<NSString*>* observableKeys(const std::vector<std::string>& keys) {
  NSMutableArray<NSString*>* observable = [NSMutableArray new];
  for (const std::string& key : keys) {
    // To an observer a dot separates the steps of a path.
    if (key.find('.') != std::string::npos) continue;
    if (NSString* name = foundationText(key)) [observable addObject:name];
  }
  return observable;
}

class UserDefaultsChanges final : public PreferencesChanges {
 public:
  Observation observe(std::string_view domain, const std::vector<std::string>& keys,
                      std::function<void()> changed) override {
    NSString* name = foundationText(domain);
    NSUserDefaults* defaults = name != nil ? defaultsOf(name) : nil;
    if (defaults == nil) return {};
    VelotapDefaultsObserver* observer =
        [[VelotapDefaultsObserver alloc] initWithDefaults:defaults
                                                     keys:observableKeys(keys)
                                                  changed:std::move(changed)];
    return Observation([observer] { [observer stop]; });
  }
};

}  // namespace

std::unique_ptr<PreferencesChanges> PreferencesChanges::system() {
  return std::make_unique<UserDefaultsChanges>();
}

}  // namespace velotap
