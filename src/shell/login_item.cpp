#include "shell/login_item.hpp"

namespace velotap {

std::optional<std::string> LoginItem::toggle() {
  switch (service_.status()) {
    case LoginItemStatus::requiresApproval:
      service_.openSettings();
      return std::nullopt;
    case LoginItemStatus::enabled:
      return service_.unregisterProgram();
    case LoginItemStatus::notRegistered:
    case LoginItemStatus::notFound:
      return service_.registerProgram();
  }
  return std::nullopt;
}

}  // namespace velotap
