// The status item on screen: the icon of the model's state, its clicks, its menu.
//
// It is made when the session has a place for it, which may be long after the program started;
// what was asked of it before is done then. Main thread.
#pragma once

#include <QSystemTrayIcon>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

#include "adapters/qt/desktop/tray_host.hpp"
#include "app/qt/menu_view.hpp"
#include "app/tray_menu.hpp"

namespace velotap {

class StatusItem {
 public:
  /// The model outlives the item. `missing` is called once when the session shows no status items.
  StatusItem(TrayMenu& model, std::function<void()> missing);

  /// What the model is given as its view.
  [[nodiscard]] TrayMenu::View view();
  /// Light marks for dark panels, dark marks for light ones.
  void setDarkPanel(bool dark);

 private:
  void make();
  void showIcon();
  void showVisibility();
  void popUp();

  TrayMenu& model_;
  TrayHost host_;
  MenuView menu_;
  QTimer settling_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  std::optional<StatusIcon> shown_;
  bool visible_ = false;
  bool darkPanel_ = false;
};

/// Is the panel dark? GNOME's always is; elsewhere panels follow the windows.
[[nodiscard]] bool expectsDarkPanel(const QString& desktops, bool darkWindows);

}  // namespace velotap
