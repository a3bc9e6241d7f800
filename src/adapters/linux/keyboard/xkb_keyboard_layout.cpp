#include "adapters/linux/keyboard/xkb_keyboard_layout.hpp"

#include <utility>

namespace velotap {

XkbKeyboardLayout::XkbKeyboardLayout(std::vector<std::unique_ptr<LayoutSource>> sources)
    : sources_(std::move(sources)) {
  for (const auto& source : sources_) source->start([this] { reconsider(); });
}

std::unique_ptr<KeyTranslator> XkbKeyboardLayout::current() {
  const LayoutKeys* keys = known();
  return keys != nullptr ? std::make_unique<LayoutKeys>(*keys) : nullptr;
}

Observation XkbKeyboardLayout::observeChanges(std::function<void()> changed) {
  return observers_.add(std::move(changed));
}

const LayoutKeys* XkbKeyboardLayout::known() const {
  for (const auto& source : sources_) {
    if (source->keys()) return &*source->keys();
  }
  return nullptr;
}

void XkbKeyboardLayout::reconsider() {
  const LayoutKeys* keys = known();
  if (keys == nullptr || told_ == *keys) return;
  told_ = *keys;
  observers_.notify();
}

}  // namespace velotap
