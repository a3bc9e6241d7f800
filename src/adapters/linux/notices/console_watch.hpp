// Whether this login's console is the one in front: with another user's in front, that user has the
// mouse, and nothing may be held back from it.
//
// Main thread. Follows the kernel's own word of the active virtual terminal. A login without one (a
// remote one, or on a seat without terminals) always counts as in front. The word of a login
// manager is better where there is one: `SessionActivity` asks this only where there is none.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/runtime/descriptor.hpp"
#include "base/observer_list.hpp"

namespace velotap {

/// `active` is what the kernel says, as "tty2"; `terminal` the number of the login's own terminal,
/// empty for none.
[[nodiscard]] bool consoleInFront(std::string_view active, std::string_view terminal) noexcept;

class ConsoleWatch {
 public:
  static constexpr const char* kActivePath = "/sys/class/tty/tty0/active";

  /// `changed` comes with every change after this. `terminal` may be null.
  ConsoleWatch(DescriptorLoop& loop, const char* terminal, std::function<void()> changed,
               const std::string& activePath = kActivePath);
  ConsoleWatch(const ConsoleWatch&) = delete;
  ConsoleWatch& operator=(const ConsoleWatch&) = delete;

  [[nodiscard]] bool inFront() const noexcept { return inFront_; }

 private:
  [[nodiscard]] bool read();

  const std::string terminal_;
  std::function<void()> changed_;
  bool inFront_ = true;
  Descriptor active_;
  Descriptor alarm_;
  Observation ready_;
};

}  // namespace velotap
