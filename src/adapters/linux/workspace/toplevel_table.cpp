#include "adapters/linux/workspace/toplevel_table.hpp"

namespace velotap {

void ToplevelTable::setActive(Key key, bool active) {
  Window& window = windows_[key];
  if (active && window.activated == 0) window.activated = ++activations_;
  if (!active) window.activated = 0;
}

std::optional<FrontWindow> ToplevelTable::front() const {
  const Window* latest = nullptr;
  for (const auto& [key, window] : windows_) {
    if (window.activated == 0 || !window.described) continue;
    if (latest == nullptr || window.activated > latest->activated) latest = &window;
  }
  if (latest == nullptr) return std::nullopt;
  return latest->facts;
}

bool FrontChange::changedTo(const std::optional<FrontWindow>& front) {
  if (!first_ && front == last_) return false;
  first_ = false;
  last_ = front;
  return true;
}

}  // namespace velotap
