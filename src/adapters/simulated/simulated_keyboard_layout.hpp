// A keyboard layout that is a table: what each key types while the shortcut modifier is held.
//
// Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/keyboard_layout.hpp"

namespace velotap {

class SimulatedKeyboardLayout final : public KeyboardLayout {
 public:
  /// By virtual key code; a key that is not in the table types nothing.
  using Keys = std::map<std::uint16_t, std::string>;

  [[nodiscard]] std::unique_ptr<KeyTranslator> current() override;
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override;

  /// Selects another layout and tells everybody. Nothing: a layout that does not tell what its keys
  /// type, on a system without a substitute.
  void select(std::optional<Keys> keys);

 private:
  std::optional<Keys> keys_ = Keys{{33, "["}, {30, "]"}, {24, "="}, {27, "-"}};
  ObserverList<> changes_;
};

}  // namespace velotap
