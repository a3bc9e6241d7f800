// A menu as plain values: what it says, and what choosing an item does. Views draw it.
//
// Titles are localised when the menu is built; whoever changes the language builds it anew. Main
// thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velotap {

/// A key pressed together with the platform's command key: Command on a Mac, Control elsewhere.
struct KeyEquivalent {
  char key = 0;
  bool shift = false;
  friend bool operator==(const KeyEquivalent&, const KeyEquivalent&) = default;
};

/// What the window that has the keyboard does itself; nothing of it is the menu's matter.
enum class ResponderCommand { undo, redo, cut, copy, paste, selectAll, close, minimize };

struct MenuItem {
  std::string title{};
  bool separator = false;
  bool enabled = true;
  bool hidden = false;
  std::optional<bool> checked{};  ///< nothing for items that have no state
  std::optional<KeyEquivalent> key{};
  std::string toolTip{};     ///< why the item cannot be chosen, for one that never can
  std::string settingKey{};  ///< of an item that switches a setting
  std::optional<ResponderCommand> responder{};
  std::function<void()> action{};  ///< empty for separators, submenus and responder commands
  std::vector<MenuItem> submenu{};

  [[nodiscard]] static MenuItem line() {
    MenuItem item;
    item.separator = true;
    return item;
  }
};

}  // namespace velotap
