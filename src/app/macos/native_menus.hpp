// The application's menus as AppKit's, and clicks on the status item as the menu model wants them.
//
// Values to values; main thread where they are used.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "adapters/macos/menus/native_menu.hpp"
#include "app/menu_item.hpp"
#include "app/tray_menu.hpp"

namespace velotap {

[[nodiscard]] std::vector<NativeMenuItem> nativeMenu(const std::vector<MenuItem>& items);

/// The menus of the menu bar. Where there is an `edit`, it is asked first to do what an edit
/// command says, and only what it leaves is sent to the system's responders. The bar outlives its
/// items.
[[nodiscard]] std::vector<NativeMenuItem> nativeMenuBar(
    const std::vector<MenuItem>& menus, NativeMenuBar& bar,
    const std::function<bool(ResponderCommand)>& edit);

[[nodiscard]] std::optional<StatusItemClick> statusItemClick(
    const std::optional<NativeClick>& click);

/// The tray menu's view over a status item of the system, which outlives it. `clicked` is what the
/// model does with a click.
[[nodiscard]] TrayMenu::View nativeTrayView(
    NativeStatusItem& item, std::function<void(const std::optional<StatusItemClick>&)> clicked);

}  // namespace velotap
