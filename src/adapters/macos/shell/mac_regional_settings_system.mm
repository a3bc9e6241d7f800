#import <Foundation/Foundation.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/mac_regional_settings.hpp"

namespace velotap {
namespace {

class FoundationRegionalSettings final : public RegionalSettings {
 public:
  std::vector<std::string> preferredLanguages() const override {
    std::vector<std::string> languages;
    for (NSString* tag in NSLocale.preferredLanguages) {
      if (auto text = textOf(tag)) languages.push_back(std::move(*text));
    }
    return languages;
  }

  std::string locale() const override {
    return textOf(NSLocale.currentLocale.localeIdentifier).value_or("");
  }

  std::string timeZone() const override {
    return textOf(NSTimeZone.systemTimeZone.name).value_or("");
  }

  std::int64_t secondsFromUniversalTime(std::int64_t moment) const override {
    NSDate* date = [NSDate dateWithTimeIntervalSince1970:static_cast<NSTimeInterval>(moment)];
    return [NSTimeZone.systemTimeZone secondsFromGMTForDate:date];
  }

  Observation observeChanges(std::function<void()> changed) override {
    NSNotificationCenter* center = NSNotificationCenter.defaultCenter;
    const auto watch = [center, &changed](NSNotificationName name) {
      std::function<void()> tell = changed;
      return [center addObserverForName:name
                                 object:nil
                                  queue:NSOperationQueue.mainQueue
                             usingBlock:^(NSNotification*) {
                               // The zone is remembered until it is told to forget.
                               [NSTimeZone resetSystemTimeZone];
                               tell();
                             }];
    };
    id<NSObject> locale = watch(NSCurrentLocaleDidChangeNotification);
    id<NSObject> zone = watch(NSSystemTimeZoneDidChangeNotification);
    return Observation([center, locale, zone] {
      [center removeObserver:locale];
      [center removeObserver:zone];
    });
  }
};

}  // namespace

std::unique_ptr<RegionalSettings> makeMacRegionalSettings() {
  return std::make_unique<FoundationRegionalSettings>();
}

}  // namespace velotap
