#include "adapters/macos/shell/mac_alerts.hpp"

namespace velotap {

int MacAlerts::runModal(const AlertRequest& request) {
  const long answer = panel_.runModal(request) - panel_.firstButton();
  // An alert that the system itself ends has the code of no button: nothing was agreed to, so the
  // last button, the most careful one, is taken.
  const long count = static_cast<long>(request.buttons.size());
  if (answer >= 0 && answer < count) return static_cast<int>(answer);
  return count > 0 ? static_cast<int>(count - 1) : 0;
}

}  // namespace velotap
