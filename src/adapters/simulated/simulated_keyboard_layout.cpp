#include "adapters/simulated/simulated_keyboard_layout.hpp"

#include <utility>

namespace velotap {
namespace {

class TableTranslator final : public KeyTranslator {
 public:
  explicit TableTranslator(SimulatedKeyboardLayout::Keys keys) : keys_(std::move(keys)) {}
  [[nodiscard]] std::optional<std::string> translate(std::uint16_t keyCode) const override {
    const auto found = keys_.find(keyCode);
    if (found == keys_.end()) return std::nullopt;
    return found->second;
  }

 private:
  SimulatedKeyboardLayout::Keys keys_;
};

}  // namespace

std::unique_ptr<KeyTranslator> SimulatedKeyboardLayout::current() {
  return keys_ ? std::make_unique<TableTranslator>(*keys_) : nullptr;
}

Observation SimulatedKeyboardLayout::observeChanges(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

void SimulatedKeyboardLayout::select(std::optional<Keys> keys) {
  keys_ = std::move(keys);
  changes_.notify();
}

}  // namespace velotap
