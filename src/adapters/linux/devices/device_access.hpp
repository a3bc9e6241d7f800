// May the program do its work: read the surfaces and make a virtual pointer?
#pragma once

#include <string>
#include <vector>

#include "platform/system_notices.hpp"

namespace velotap {

/// What stands in the way of reading touches and posting clicks; empty when nothing does.
struct AccessProblems {
  std::vector<std::string> unreadableNodes;
  bool uinputMissing = false;  ///< the kernel module is not loaded
  bool uinputDenied = false;
  [[nodiscard]] bool none() const noexcept {
    return unreadableNodes.empty() && !uinputMissing && !uinputDenied;
  }
  /// One sentence for a person; empty when nothing stands in the way.
  [[nodiscard]] std::string text() const;
};

/// Asked of the system, not remembered: access lists change while the program runs.
[[nodiscard]] AccessProblems findAccessProblems();

class DeviceAccess final : public AccessibilityTrust {
 public:
  [[nodiscard]] bool trusted() override { return findAccessProblems().none(); }
};

}  // namespace velotap
