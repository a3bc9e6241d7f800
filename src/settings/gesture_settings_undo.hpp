// The one undo that a change of many gestures leaves behind.
//
// Pure; any thread. It gives back only what the change changed, and only where nobody has changed
// it again since.
#pragma once

#include <map>
#include <string>

namespace velotap {

using TriggerValues = std::map<std::string, bool, std::less<>>;

struct GestureSettingsUndo {
  TriggerValues before;
  TriggerValues after;  ///< of the same keys

  /// What to write; keys that are absent stay as they are.
  [[nodiscard]] TriggerValues restoring(const TriggerValues& current) const;
};

}  // namespace velotap
