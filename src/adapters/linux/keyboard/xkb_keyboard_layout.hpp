// The keyboard layout in use on Linux.
//
// Main thread. Asks several sources and believes the first that knows: the desktop's own word, the
// server's, and at last what the system is configured to have. Connecting does not wait for
// answers where it can be helped, so a better source may come to know only later; that counts as
// a change of layout.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/linux/keyboard/layout_source.hpp"
#include "platform/keyboard_layout.hpp"

namespace velotap {

class XkbKeyboardLayout final : public KeyboardLayout {
 public:
  /// `sources`, the most believable first, are started here.
  explicit XkbKeyboardLayout(std::vector<std::unique_ptr<LayoutSource>> sources);

  [[nodiscard]] std::unique_ptr<KeyTranslator> current() override;
  [[nodiscard]] Observation observeChanges(std::function<void()> changed) override;

 private:
  [[nodiscard]] const LayoutKeys* known() const;
  void reconsider();

  std::vector<std::unique_ptr<LayoutSource>> sources_;
  std::optional<LayoutKeys> told_;
  ObserverList<> observers_;
};

}  // namespace velotap
