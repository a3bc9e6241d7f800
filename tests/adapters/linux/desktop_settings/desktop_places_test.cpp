#include "adapters/linux/desktop_settings/desktop_places.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace velotap {
namespace {

DesktopPlaces places(std::map<std::string, std::string> environment) {
  return DesktopPlaces::read([&](const char* name) -> const char* {
    const auto found = environment.find(name);
    return found == environment.end() ? nullptr : found->second.c_str();
  });
}

TEST(DesktopPlaces, gnomeAndItsRelativesHaveTheirSchemas) {
  for (const char* desktop : {"GNOME", "ubuntu:GNOME", "Unity", "Budgie:GNOME", "Pantheon"}) {
    const auto found = places({{"XDG_CURRENT_DESKTOP", desktop}});
    EXPECT_EQ(found.kind, DesktopKind::gnome) << desktop;
    EXPECT_EQ(found.touchpadSchema, "org.gnome.desktop.peripherals.touchpad");
  }
  EXPECT_EQ(places({{"XDG_CURRENT_DESKTOP", "X-Cinnamon"}}).touchpadSchema,
            "org.cinnamon.desktop.peripherals.touchpad");
}

TEST(DesktopPlaces, kdeKeepsItsInputInAFileLaidOverTheSystems) {
  const auto found = places({{"XDG_CURRENT_DESKTOP", "KDE"},
                             {"HOME", "/home/ann"},
                             {"XDG_CONFIG_DIRS", "/first:/second"}});
  EXPECT_EQ(found.kind, DesktopKind::kde);
  EXPECT_EQ(found.kdeInputFiles,
            (std::vector<std::string>{"/second/kcminputrc", "/first/kcminputrc",
                                      "/home/ann/.config/kcminputrc"}));
  EXPECT_EQ(places({{"XDG_CURRENT_DESKTOP", "KDE"}, {"XDG_CONFIG_HOME", "/c"}}).kdeInputFiles,
            (std::vector<std::string>{"/etc/xdg/kcminputrc", "/c/kcminputrc"}));
}

TEST(DesktopPlaces, fromItsSixthVersionOnKdeTapsByDefault) {
  const auto taps = [](const char* version) {
    return places({{"XDG_CURRENT_DESKTOP", "KDE"}, {"KDE_SESSION_VERSION", version}})
        .kdeTapsByDefault;
  };
  EXPECT_FALSE(taps("5"));
  EXPECT_TRUE(taps("6"));
  EXPECT_TRUE(taps("7"));
  EXPECT_FALSE(taps("six"));
  EXPECT_FALSE(places({{"XDG_CURRENT_DESKTOP", "KDE"}}).kdeTapsByDefault);
}

TEST(DesktopPlaces, onXTheServerKnowsWhateverTheDesktopSet) {
  for (const char* desktop : {"KDE", "XFCE", ""}) {
    const auto found =
        places({{"XDG_CURRENT_DESKTOP", desktop}, {"XDG_SESSION_TYPE", "x11"}, {"DISPLAY", ":7"}});
    EXPECT_EQ(found.kind, DesktopKind::xServer) << desktop;
    EXPECT_EQ(found.display, ":7");
  }
  EXPECT_EQ(places({{"XDG_CURRENT_DESKTOP", "GNOME"}, {"DISPLAY", ":7"}}).kind, DesktopKind::gnome);
  EXPECT_EQ(places({{"DISPLAY", ":7"}}).kind, DesktopKind::xServer);
}

TEST(DesktopPlaces, onWaylandTheXServerIsNotAsked) {
  EXPECT_EQ(
      places({{"XDG_CURRENT_DESKTOP", "KDE"}, {"XDG_SESSION_TYPE", "wayland"}, {"DISPLAY", ":0"}})
          .kind,
      DesktopKind::kde);
  EXPECT_EQ(places({{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}}).kind, DesktopKind::other);
}

TEST(DesktopPlaces, anyOtherDesktopIsNotKnown) {
  EXPECT_EQ(places({}).kind, DesktopKind::other);
  EXPECT_EQ(places({{"XDG_CURRENT_DESKTOP", "sway"}}).kind, DesktopKind::other);
}

}  // namespace
}  // namespace velotap
