// Whether this login's console is the one in front: with another user's in front, that user has the
// mouse, and nothing may be held back from it.
//
// Main thread. Follows the kernel's own word of the active virtual terminal. A login without one (a
// remote one, or on a seat without terminals) always counts as in front.
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
  /// Counts as in front until `changed` is told something else, which may be at once. `terminal`
  /// may be null.
  ConsoleWatch(DescriptorLoop& loop, const char* terminal, std::function<void(bool)> changed,
               const std::string& activePath = "/sys/class/tty/tty0/active");
  ConsoleWatch(const ConsoleWatch&) = delete;
  ConsoleWatch& operator=(const ConsoleWatch&) = delete;

 private:
  void read();

  const std::string terminal_;
  std::function<void(bool)> changed_;
  bool inFront_ = true;
  Descriptor active_;
  Descriptor alarm_;
  Observation ready_;
};

}  // namespace velotap
