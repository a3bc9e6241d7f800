// One way of learning which layout the keyboard has.
//
// Main thread. A source connects to whoever knows, without waiting, and follows changes until it
// is destroyed. What it knew last stays while its server is away.
#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "adapters/linux/keyboard/layout_keys.hpp"

namespace velotap {

class LayoutSource {
 public:
  virtual ~LayoutSource() = default;
  LayoutSource(const LayoutSource&) = delete;
  LayoutSource& operator=(const LayoutSource&) = delete;

  /// Called once. `changed` may be called before it returns, and whenever `keys` is different.
  virtual void start(std::function<void()> changed) = 0;

  /// Nothing as long as the source does not know.
  [[nodiscard]] const std::optional<LayoutKeys>& keys() const noexcept { return keys_; }

 protected:
  LayoutSource() = default;
  void listenWith(std::function<void()> changed) { changed_ = std::move(changed); }
  /// An answer of nothing is no news: what was known stays.
  void know(std::optional<LayoutKeys> keys) {
    if (!keys || keys == keys_) return;
    keys_ = std::move(keys);
    if (changed_) changed_();
  }

 private:
  std::optional<LayoutKeys> keys_;
  std::function<void()> changed_;
};

}  // namespace velotap
