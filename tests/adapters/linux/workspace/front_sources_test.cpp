#include "adapters/linux/workspace/front_sources.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace velotap {
namespace {

using Kind = FrontSourceKind;
using Kinds = std::vector<FrontSourceKind>;

TEST(SourcesFor, noSession) {
  EXPECT_TRUE(sourcesFor({}).empty());
}

TEST(SourcesFor, aPlainXSession) {
  EXPECT_EQ(sourcesFor({.sessionType = "x11", .display = ":0"}), Kinds{Kind::x11});
  EXPECT_EQ(sourcesFor({.display = ":0"}), Kinds{Kind::x11});
  // A nested compositor that was tried out must not hide the session's own server.
  EXPECT_EQ(sourcesFor({.sessionType = "x11", .display = ":0", .waylandDisplay = "wayland-1"}),
            Kinds{Kind::x11});
}

TEST(SourcesFor, neverTheXServerInsideWayland) {
  for (const std::string desktop : {"", "sway", "KDE", "GNOME"}) {
    const auto kinds = sourcesFor({.sessionType = "wayland",
                                   .currentDesktop = desktop,
                                   .display = ":0",
                                   .waylandDisplay = "wayland-0",
                                   .busAddress = "unix:path=/bus"});
    EXPECT_EQ(std::count(kinds.begin(), kinds.end(), Kind::x11), 0) << desktop;
  }
}

TEST(SourcesFor, eachWaylandDesktopItsOwn) {
  const auto kinds = [](const std::string& desktop, const std::string& bus = "unix:path=/bus") {
    return sourcesFor(
        {.currentDesktop = desktop, .waylandDisplay = "wayland-0", .busAddress = bus});
  };
  EXPECT_EQ(kinds("KDE"), (Kinds{Kind::wlroots, Kind::kdeWindowManagement, Kind::kdeScript}));
  EXPECT_EQ(kinds("GNOME"),
            (Kinds{Kind::wlroots, Kind::kdeWindowManagement, Kind::gnomeExtension}));
  EXPECT_EQ(kinds("ubuntu:GNOME"), kinds("GNOME"));
  EXPECT_EQ(kinds("NotGNOME"), kinds("KDE"));
  EXPECT_EQ(kinds(""), (Kinds{Kind::wlroots, Kind::kdeWindowManagement, Kind::kdeScript,
                              Kind::gnomeExtension}));
  EXPECT_EQ(kinds("GNOME", ""), (Kinds{Kind::wlroots, Kind::kdeWindowManagement}));
}

}  // namespace
}  // namespace velotap
