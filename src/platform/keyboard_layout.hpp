// The port for the keyboard layout in use.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/observer_list.hpp"

namespace velotap {

/// What each key of one layout types. Immutable; owned by the caller.
class KeyTranslator {
 public:
  virtual ~KeyTranslator() = default;
  /// What the key types while the shortcut modifier is held; nothing when it types no character.
  [[nodiscard]] virtual std::optional<std::string> translate(std::uint16_t keyCode) const = 0;
};

/// Main thread.
class KeyboardLayout {
 public:
  virtual ~KeyboardLayout() = default;
  /// The layout in use, or an ASCII-capable substitute; null when neither tells its characters.
  [[nodiscard]] virtual std::unique_ptr<KeyTranslator> current() = 0;
  /// Calls back on the main thread whenever another layout was selected.
  [[nodiscard]] virtual Observation observeChanges(std::function<void()> changed) = 0;
};

}  // namespace velotap
