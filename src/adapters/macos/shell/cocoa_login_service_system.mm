#import <ServiceManagement/ServiceManagement.h>

#include "adapters/macos/cocoa/foundation_text.hpp"
#include "adapters/macos/shell/mac_login_item.hpp"

namespace velotap {
namespace {

CocoaLoginService::Error told(NSError* error) {
  return {error.code, textOf(error.localizedDescription).value_or("")};
}

class SystemLoginService final : public CocoaLoginService {
 public:
  long status() override { return SMAppService.mainAppService.status; }

  std::optional<Error> registerService() override {
    NSError* error = nil;
    if ([SMAppService.mainAppService registerAndReturnError:&error]) return std::nullopt;
    return told(error);
  }

  std::optional<Error> unregisterService() override {
    NSError* error = nil;
    if ([SMAppService.mainAppService unregisterAndReturnError:&error]) return std::nullopt;
    return told(error);
  }

  void openLoginItemsSettings() override { [SMAppService openSystemSettingsLoginItems]; }
};

}  // namespace

std::unique_ptr<CocoaLoginService> CocoaLoginService::system() {
  return std::make_unique<SystemLoginService>();
}

}  // namespace velotap
