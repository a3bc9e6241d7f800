// Where this desktop keeps the settings that the program sends people to.
//
// Pure; any thread. Pages are asked for by the names that the rest of the program has for them,
// which are addresses of another system's settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velotap {

/// What a page is about; `none` for an address that is no page of the settings.
enum class SettingsPage { none, trackpad, mouse, loginItems };

[[nodiscard]] SettingsPage settingsPageOf(std::string_view url);

/// Commands that show the page on this desktop (XDG_CURRENT_DESKTOP), best first; the first one
/// that is installed is the one to run.
[[nodiscard]] std::vector<std::vector<std::string>> commandsFor(SettingsPage page,
                                                                std::string_view currentDesktop);

}  // namespace velotap
