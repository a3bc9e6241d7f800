// Draws a menu of plain values as a menu of Qt's, and keeps it up to date.
//
// A menu that is shown again with other titles and states keeps its actions: status item hosts read
// the menu over the bus and know its items by their numbers. Main thread.
#pragma once

#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

#include "app/menu_item.hpp"

namespace velotap {

class MenuView {
 public:
  /// `aboutToShow` is called before the menu, but none of its submenus, is shown; the place to call
  /// `show`.
  explicit MenuView(std::function<void()> aboutToShow);

  void show(const std::vector<MenuItem>& items);
  [[nodiscard]] QMenu& menu() { return menu_; }

 private:
  void sync(QMenu& menu, const std::vector<MenuItem>& items);
  void build(QMenu& menu, const std::vector<MenuItem>& items);

  QMenu menu_;
};

}  // namespace velotap
