// Who hears of settings that another program wrote, which only Objective-C can.
//
// The system tells of single keys, of this program's own writing too, on any thread, and never of
// a key with a dot in its name.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/observer_list.hpp"

namespace velotap {

class PreferencesChanges {
 public:
  virtual ~PreferencesChanges() = default;
  /// Main thread. Calls back, on any thread, when one of the keys may have changed.
  [[nodiscard]] virtual Observation observe(std::string_view domain,
                                            const std::vector<std::string>& keys,
                                            std::function<void()> changed) = 0;

  /// The user defaults of this system. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<PreferencesChanges> system();
};

}  // namespace velotap
