#import <Foundation/Foundation.h>

#include <utility>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/cocoa/key_path_observer.hpp"
#include "adapters/macos/preferences/preferences_changes.hpp"

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
    return observeKeyPaths(defaults, observableKeys(keys), std::move(changed));
  }
};

}  // namespace

std::unique_ptr<PreferencesChanges> PreferencesChanges::system() {
  return std::make_unique<UserDefaultsChanges>();
}

}  // namespace velotap
