#include "settings/app_rules.hpp"

#include <algorithm>
#include <array>

#include "localization/text_search.hpp"

namespace velotap {
namespace {

constexpr auto kCompatibility = std::to_array<std::string_view>(
    {"com.parallels.desktop.console", "com.vmware.fusion", "com.utmapp.UTM",
     "com.microsoft.rdc.macos", "com.teamviewer.TeamViewer", "com.valvesoftware.steam",
     // From here on names of desktop entries.
     "virt-manager", "org.gnome.Boxes", "virtualbox", "vmware-workstation", "vmware-player",
     "remote-viewer", "org.remmina.Remmina", "org.kde.krdc", "org.gnome.Connections", "anydesk",
     "rustdesk", "com.moonlight_stream.Moonlight", "steam", "com.valvesoftware.Steam",
     "net.lutris.Lutris", "com.usebottles.bottles", "com.heroicgameslauncher.hgl",
     "com.freerdp.FreeRDP", "vinagre"});
constexpr std::size_t kFirstOfLinux = 6;

std::string fileNameWithoutEnding(std::string_view location) {
  std::string_view name = location.substr(0, location.find_last_not_of('/') + 1);
  name.remove_prefix(name.find_last_of('/') + 1);
  for (const std::string_view ending : {".app", ".desktop"}) {
    if (name.size() > ending.size() && name.substr(name.size() - ending.size()) == ending) {
      name.remove_suffix(ending.size());
      break;
    }
  }
  return std::string(name);
}

bool matchesAvailability(const std::string& availability, const AppEntry& entry) {
  if (availability == "all") return true;
  return (availability == "installed") == entry.isInstalled();
}

}  // namespace

AppEntry appEntry(std::string_view bundleID, const std::optional<ApplicationBundle>& application) {
  AppEntry entry{.bundleID = std::string(bundleID), .name = std::string(bundleID), .url = {}};
  if (!application) return entry;
  entry.url = application->location;
  for (const std::string& name : {application->displayName, application->bundleName,
                                  fileNameWithoutEnding(application->location)}) {
    if (name.empty()) continue;
    entry.name = name;
    break;
  }
  return entry;
}

std::vector<AppEntry> AppRuleFilter::matching(std::vector<AppEntry> entries) const {
  std::erase_if(entries, [this](const AppEntry& entry) {
    return !matchesAvailability(availability, entry) ||
           (overriddenOnly && !overriddenIDs.contains(entry.bundleID)) ||
           !(containsText(entry.name, query) || containsText(entry.bundleID, query));
  });
  const bool byIdentifier = sort == "identifier";
  const auto before = [=](const AppEntry& a, const AppEntry& b) {
    const auto order =
        byIdentifier ? compareText(a.bundleID, b.bundleID) : compareText(a.name, b.name);
    return std::is_neq(order) ? std::is_lt(order) : a.bundleID < b.bundleID;
  };
  // With every letter that is typed the lists come in order already.
  if (!std::is_sorted(entries.begin(), entries.end(), before)) {
    std::sort(entries.begin(), entries.end(), before);
  }
  return entries;
}

int AppRuleFilter::activeCount() const {
  return int{ruleType != "all"} + int{availability != "all"} + int{overriddenOnly};
}

bool AppRuleFilter::hidesAnything() const {
  return activeCount() > 0 || !query.empty();
}

std::span<const std::string_view> compatibilityApps() noexcept {
  return std::span(kCompatibility).first(kFirstOfLinux);
}

std::span<const std::string_view> compatibilityAppsOfLinux() noexcept {
  return kCompatibility;
}

}  // namespace velotap
