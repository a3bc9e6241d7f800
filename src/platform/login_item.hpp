// The port for starting the program when the person logs in.
//
// Main thread. The system decides: a person may have switched the item off elsewhere, and then
// only they can switch it on again.
#pragma once

#include <optional>
#include <string>

namespace velotap {

enum class LoginItemStatus { notRegistered, enabled, requiresApproval, notFound };

class LoginItemService {
 public:
  virtual ~LoginItemService() = default;
  /// Asked of the system each time.
  [[nodiscard]] virtual LoginItemStatus status() = 0;
  /// Nothing on success, else a sentence for the person.
  [[nodiscard]] virtual std::optional<std::string> registerProgram() = 0;
  [[nodiscard]] virtual std::optional<std::string> unregisterProgram() = 0;
  /// Shows where the person manages what starts at login, and may approve this program.
  virtual void openSettings() = 0;
};

}  // namespace velotap
