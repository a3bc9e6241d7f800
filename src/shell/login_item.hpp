// The switch "launch at login", as a person understands it.
//
// Main thread. Keeps nothing: the system knows what starts at login.
#pragma once

#include <optional>
#include <string>

#include "platform/login_item.hpp"

namespace velotap {

class LoginItem {
 public:
  explicit LoginItem(LoginItemService& service) : service_(service) {}

  /// The switch of this process, over the current shell platform.
  [[nodiscard]] static LoginItem& shared();

  [[nodiscard]] LoginItemStatus status() { return service_.status(); }

  /// Switches an item that is on off and any other on; one that awaits the person's approval can
  /// only be approved by them, where the system shows it. A sentence for the person when the system
  /// refused.
  [[nodiscard]] std::optional<std::string> toggle();

  void openSettings() { service_.openSettings(); }

 private:
  LoginItemService& service_;
};

}  // namespace velotap
