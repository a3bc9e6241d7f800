// What the parts of the application ask of whoever draws it, beside what their own views do.
//
// Closures, so that every decision of the application is exercised without a window. Main thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace velotap {

/// Text of the localisation tables in the person's language, looked up at the moment it is shown.
using Localize = std::function<std::string(std::string_view key)>;

/// The panes of the settings window that the rest of the application opens.
enum class SettingsPane { general, about };

struct ApplicationEffects {
  /// Brings the application to the front, whatever is there.
  std::function<void()> activate;
  /// Ends the application in good order.
  std::function<void()> terminate;
  std::function<void(SettingsPane)> openSettings;
};

/// The updater as menus need it. Menus are built before the updater starts, and it is not for them
/// to start it: the reason is asked of the service, not of the updater.
struct UpdateActions {
  /// Why the person cannot ask for updates, as a key of the localisation tables.
  std::function<std::optional<std::string>()> unavailableReason;
  std::function<void()> check;
};

}  // namespace velotap
