#include "adapters/macos/shell/mac_login_item.hpp"

namespace velotap {
namespace {

constexpr long kJobNotFound = 6;
constexpr long kAlreadyRegistered = 12;

std::optional<std::string> sentence(const std::optional<CocoaLoginService::Error>& error,
                                    long harmless) {
  if (!error || error->code == harmless) return std::nullopt;
  // The system may have no words for an error of its own.
  return error->description.empty() ? "SMAppServiceError " + std::to_string(error->code)
                                    : error->description;
}

}  // namespace

LoginItemStatus MacLoginItem::status() {
  switch (service_.status()) {
    case 0:
      return LoginItemStatus::notRegistered;
    case 1:
      return LoginItemStatus::enabled;
    case 2:
      return LoginItemStatus::requiresApproval;
    default:  // also what later systems may add: nothing is known to be registered
      return LoginItemStatus::notFound;
  }
}

std::optional<std::string> MacLoginItem::registerProgram() {
  return sentence(service_.registerService(), kAlreadyRegistered);
}

std::optional<std::string> MacLoginItem::unregisterProgram() {
  return sentence(service_.unregisterService(), kJobNotFound);
}

}  // namespace velotap
