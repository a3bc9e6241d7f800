#include "settings/preferences_tabs.hpp"

#include <array>
#include <cstddef>

namespace velotap {
namespace {

constexpr std::array kTabs = {
    PreferencesTabRow{PreferencesTab::general, "General", "gearshape"},
    PreferencesTabRow{PreferencesTab::gestures, "Gestures", "hand.tap"},
    PreferencesTabRow{PreferencesTab::tuning, "Tuning", "slider.horizontal.3"},
    PreferencesTabRow{PreferencesTab::apps, "Apps", "app.badge.checkmark"},
    PreferencesTabRow{PreferencesTab::about, "About", "info.circle"},
};

}  // namespace

std::span<const PreferencesTabRow> preferencesTabs() noexcept {
  return kTabs;
}

std::string_view preferencesTabLabel(PreferencesTab tab) noexcept {
  return kTabs.at(static_cast<std::size_t>(tab)).label;
}

ShowPreferencesSteps showPreferences(PreferencesTab tab, const PreferencesWindowNow& now) noexcept {
  const bool miniaturised = now.exists && now.miniaturised;
  return {.build = !now.exists,
          .select = tab,
          .restoreFromDock = miniaturised,
          .centre = !miniaturised && !(now.exists && now.visible)};
}

}  // namespace velotap
