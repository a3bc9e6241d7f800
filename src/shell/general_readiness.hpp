// Whether the program is doing its work, and if not, the first thing that stands in the way.
//
// Pure; any thread.
#pragma once

#include <string_view>

namespace velotap {

/// In the order in which they are decided.
enum class GeneralReadiness {
  paused,      ///< switched off by the person
  permission,  ///< not trusted
  listeners,   ///< nothing could be started, usually because no device is connected
  active,
};

[[nodiscard]] constexpr GeneralReadiness generalReadiness(bool enabled, bool granted,
                                                          bool listenersRunning) noexcept {
  if (!enabled) return GeneralReadiness::paused;
  if (!granted) return GeneralReadiness::permission;
  return listenersRunning ? GeneralReadiness::active : GeneralReadiness::listeners;
}

/// The key of the title in the localisation tables.
[[nodiscard]] constexpr std::string_view readinessTitleKey(GeneralReadiness readiness) noexcept {
  switch (readiness) {
    case GeneralReadiness::paused:
      return "status.paused.title";
    case GeneralReadiness::permission:
      return "Accessibility permission required";
    case GeneralReadiness::listeners:
      return "status.listeners.title";
    case GeneralReadiness::active:
      break;
  }
  return "status.active.title";
}

}  // namespace velotap
