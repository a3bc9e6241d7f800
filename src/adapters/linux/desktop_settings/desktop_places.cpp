#include "adapters/linux/desktop_settings/desktop_places.hpp"

#include <algorithm>
#include <array>
#include <sstream>
#include <string_view>

#include "adapters/linux/desktop_settings/kde_config.hpp"

namespace velotap {
namespace {

struct GnomeRelative {
  std::string_view desktop;
  const char* schema;
};
constexpr const char* kGnomeSchema = "org.gnome.desktop.peripherals.touchpad";
constexpr const char* kCinnamonSchema = "org.cinnamon.desktop.peripherals.touchpad";
constexpr std::array kGnomeRelatives = {
    GnomeRelative{"GNOME", kGnomeSchema},         GnomeRelative{"Unity", kGnomeSchema},
    GnomeRelative{"Budgie", kGnomeSchema},        GnomeRelative{"Pantheon", kGnomeSchema},
    GnomeRelative{"X-Cinnamon", kCinnamonSchema}, GnomeRelative{"Cinnamon", kCinnamonSchema}};

constexpr const char* kKdeInputFile = "/kcminputrc";
constexpr int kFirstTappingPlasma = 6;

std::string valueOf(const DconfPlaces::Lookup& lookup, const char* name) {
  const char* value = lookup(name);
  return value != nullptr ? value : "";
}

/// On Wayland there usually is an X server too, but its touchpads are the compositor's.
bool isOnX(const DconfPlaces::Lookup& lookup) {
  if (valueOf(lookup, "DISPLAY").empty()) return false;
  const std::string type = valueOf(lookup, "XDG_SESSION_TYPE");
  return type == "x11" || (type != "wayland" && valueOf(lookup, "WAYLAND_DISPLAY").empty());
}

std::vector<std::string> kdeFiles(const DconfPlaces::Lookup& lookup) {
  std::string folders = valueOf(lookup, "XDG_CONFIG_DIRS");
  if (folders.empty()) folders = "/etc/xdg";
  std::vector<std::string> files;
  std::istringstream stream(folders);
  for (std::string folder; std::getline(stream, folder, ':');) {
    if (!folder.empty()) files.push_back(folder + kKdeInputFile);
  }
  // The first folder wins, so it is laid over the others.
  std::ranges::reverse(files);
  std::string own = valueOf(lookup, "XDG_CONFIG_HOME");
  const std::string home = valueOf(lookup, "HOME");
  if (!own.starts_with('/')) own = home.empty() ? "" : home + "/.config";
  if (!own.empty()) files.push_back(own + kKdeInputFile);
  return files;
}

}  // namespace

DesktopPlaces DesktopPlaces::read(const DconfPlaces::Lookup& lookup) {
  DesktopPlaces places;
  places.dconf = DconfPlaces::read(lookup);
  const auto& desktops = places.dconf.desktops;
  for (const auto& desktop : desktops) {
    const auto relative = std::ranges::find(kGnomeRelatives, desktop, &GnomeRelative::desktop);
    if (relative == kGnomeRelatives.end()) continue;
    places.kind = DesktopKind::gnome;
    places.touchpadSchema = relative->schema;
    return places;
  }
  if (isOnX(lookup)) {
    places.kind = DesktopKind::xServer;
    places.display = valueOf(lookup, "DISPLAY");
  } else if (std::ranges::find(desktops, "KDE") != desktops.end()) {
    places.kind = DesktopKind::kde;
    places.kdeInputFiles = kdeFiles(lookup);
    const auto version = kdeInteger(valueOf(lookup, "KDE_SESSION_VERSION"));
    places.kdeTapsByDefault = version.value_or(0) >= kFirstTappingPlasma;
  }
  return places;
}

}  // namespace velotap
