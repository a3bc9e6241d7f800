// The panes of the settings window, and what showing one does to the window.
//
// Pure values; any thread. The window itself belongs to the views: it asks here what to do, and
// keeps nothing but itself, so that its panes are fresh each time it is opened.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "localization/texts.hpp"

namespace velotap {

/// The number is the pane's place in the window.
enum class PreferencesTab : int { general = 0, gestures = 1, tuning = 2, apps = 3, about = 4 };

struct PreferencesTabRow {
  PreferencesTab tab = PreferencesTab::general;
  std::string_view label{};  ///< English, which is also its key and its identifier
  std::string_view symbol{};
};

/// In the order of their numbers.
[[nodiscard]] std::span<const PreferencesTabRow> preferencesTabs() noexcept;
[[nodiscard]] std::string_view preferencesTabLabel(PreferencesTab tab) noexcept;

/// Sizes of the window's content, in points.
struct PreferencesWindowSize {
  static constexpr int kWidth = 560;
  static constexpr int kHeight = 600;
  static constexpr int kLeastWidth = 480;
  static constexpr int kLeastHeight = 420;
};
/// Under this name the place and size that the person gives the window are remembered.
inline constexpr std::string_view kPreferencesFrameName = "VelotapSettings";

struct PreferencesWindowNow {
  bool exists = false;
  bool miniaturised = false;
  bool visible = false;
};

/// What to do, in this order; the window is then made key and brought to the front.
struct ShowPreferencesSteps {
  bool build = false;
  PreferencesTab select = PreferencesTab::general;
  bool restoreFromDock = false;
  bool centre = false;
};

[[nodiscard]] ShowPreferencesSteps showPreferences(PreferencesTab tab,
                                                   const PreferencesWindowNow& now) noexcept;

}  // namespace velotap
