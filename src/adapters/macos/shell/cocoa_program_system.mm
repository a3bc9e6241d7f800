#import <Foundation/Foundation.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/program_facts.hpp"

namespace velotap {
namespace {

class SystemProgram final : public CocoaProgram {
 public:
  std::optional<std::string> entry(const std::string& key) override {
    id value = [NSBundle.mainBundle objectForInfoDictionaryKey:foundationText(key)];
    if (![value isKindOfClass:[NSString class]]) return std::nullopt;
    return textOf(value);
  }

  std::string systemVersion() override {
    return textOf(NSProcessInfo.processInfo.operatingSystemVersionString).value_or("");
  }
};

}  // namespace

std::unique_ptr<CocoaProgram> CocoaProgram::system() {
  return std::make_unique<SystemProgram>();
}

}  // namespace velotap
