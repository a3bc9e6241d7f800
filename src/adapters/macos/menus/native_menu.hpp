// Menus of AppKit as plain values, and where they are shown.
//
// The values hold everything that was decided; showing them is a translation. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velotap {

struct NativeMenuItem {
  std::string title{};
  bool separator = false;
  bool enabled = true;
  bool hidden = false;
  std::optional<bool> checked{};
  std::string key{};      ///< key equivalent, pressed with Command; empty for none
  bool keyShift = false;  ///< with Shift as well
  std::string toolTip{};
  std::string selector{};  ///< sent to the first responder that knows it, instead of the action
  std::function<void()> action{};
  std::vector<NativeMenuItem> submenu{};
};

/// The application's menu bar.
class NativeMenuBar {
 public:
  virtual ~NativeMenuBar() = default;
  /// Replaces the menu bar. The last menu is registered as the one that lists windows.
  virtual void show(const std::vector<NativeMenuItem>& menus) = 0;
  /// Sends a selector to the first responder that knows it, as an item of the menu would.
  virtual void send(const std::string& selector) = 0;

  /// The menu bar of this application. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<NativeMenuBar> system();
};

/// What the system's event says about a click on the status item.
struct NativeClick {
  enum class Kind { leftUp, rightUp, other };
  Kind kind = Kind::other;
  bool control = false;
};

/// The square item in the system's status bar. Without a menu of its own, so that a left click can
/// mean something else.
class NativeStatusItem {
 public:
  virtual ~NativeStatusItem() = default;
  /// Makes the item, visible or not, and has every left and right click reported when the button is
  /// let go; with nothing when there is no current event.
  virtual void create(std::function<void(const std::optional<NativeClick>&)> clicked) = 0;
  /// The system symbol of that name as a template, never drawn as disabled.
  virtual void setIcon(const std::string& symbol, const std::string& label) = 0;
  virtual void setVisible(bool visible) = 0;
  /// Shows the menu below the item, which is highlighted meanwhile; returns when it has closed.
  virtual void popUp(const std::vector<NativeMenuItem>& menu) = 0;

  /// A status item of this application. Exists on a Mac only.
  [[nodiscard]] static std::unique_ptr<NativeStatusItem> system();
};

}  // namespace velotap
