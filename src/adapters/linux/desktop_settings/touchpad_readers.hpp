// What GNOME and KDE have stored about touchpads, as plain values.
//
// Pure; any thread. What a desktop does not say has its own default, or else the input library's.
#pragma once

#include <string_view>

#include "adapters/linux/dconf/dconf_snapshot.hpp"
#include "adapters/linux/desktop_settings/kde_config.hpp"
#include "adapters/linux/desktop_settings/touchpad_settings.hpp"

namespace velotap {

/// GNOME and its relatives have one setting for all touchpads, each in a schema of its own.
[[nodiscard]] DesktopTouchpads gnomeTouchpads(const DconfSnapshot& settings,
                                              std::string_view schema);

/// KDE has settings for each touchpad, in `kcminputrc`. `tapByDefault`: from Plasma 6 on a touchpad
/// taps unless told otherwise; before, the input library's default held.
[[nodiscard]] DesktopTouchpads kdeTouchpads(const KdeConfig& config, bool tapByDefault);

}  // namespace velotap
