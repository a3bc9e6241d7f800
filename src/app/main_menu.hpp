// The application's main menu, so that its windows get the usual shortcuts.
//
// A plain model; built anew whenever the person's language changes. Main thread.
#pragma once

#include <functional>
#include <vector>

#include "app/menu_item.hpp"
#include "app/shell_surroundings.hpp"

namespace velotap {

class MainMenu {
 public:
  /// `show` puts the menu in place of the one before; its last menu is the one that lists windows.
  MainMenu(ApplicationEffects application, UpdateActions updates, Localize localize,
           std::function<void(const std::vector<MenuItem>&)> show);

  /// Builds the menu and shows it.
  void install();
  [[nodiscard]] const std::vector<MenuItem>& menus() const noexcept { return menus_; }

 private:
  [[nodiscard]] MenuItem applicationMenu();
  [[nodiscard]] MenuItem editMenu() const;
  [[nodiscard]] MenuItem windowMenu() const;
  [[nodiscard]] MenuItem command(std::string_view titleKey, KeyEquivalent key,
                                 ResponderCommand responder) const;

  ApplicationEffects application_;
  UpdateActions updates_;
  Localize localize_;
  std::function<void(const std::vector<MenuItem>&)> show_;
  std::vector<MenuItem> menus_;
};

}  // namespace velotap
