#include "settings/gesture_settings_undo.hpp"

namespace velotap {

TriggerValues GestureSettingsUndo::restoring(const TriggerValues& current) const {
  TriggerValues result;
  for (const auto& [key, old] : before) {
    const auto changed = after.find(key);
    const auto now = current.find(key);
    if (changed == after.end() || now == current.end()) continue;
    if (old != changed->second && now->second == changed->second) result.emplace(key, old);
  }
  return result;
}

}  // namespace velotap
