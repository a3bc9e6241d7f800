#include "adapters/linux/session/session_environment.hpp"

#include <gtest/gtest.h>

#include <map>

namespace velotap {
namespace {

using Texts = std::vector<std::string>;

SessionEnvironment read(const std::map<std::string, std::string>& variables) {
  return SessionEnvironment::read([&variables](const char* name) -> const char* {
    const auto found = variables.find(name);
    return found == variables.end() ? nullptr : found->second.c_str();
  });
}

TEST(SessionEnvironment, readsWhatThereIs) {
  const auto session = read({{"XDG_SESSION_TYPE", "wayland"},
                             {"XDG_CURRENT_DESKTOP", "KDE"},
                             {"XDG_RUNTIME_DIR", "/run/user/1000"},
                             {"DISPLAY", ":0"},
                             {"WAYLAND_DISPLAY", "wayland-0"},
                             {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/tmp/bus"},
                             {"XDG_DATA_HOME", "/home/a/data"},
                             {"XDG_DATA_DIRS", "/opt/share"},
                             {"LC_MESSAGES", "de_DE.UTF-8"},
                             {"LANG", "fr_FR.UTF-8"}});
  EXPECT_EQ(session.sessionType, "wayland");
  EXPECT_EQ(session.currentDesktop, "KDE");
  EXPECT_EQ(session.runtimeFolder, "/run/user/1000");
  EXPECT_EQ(session.display, ":0");
  EXPECT_EQ(session.waylandDisplay, "wayland-0");
  EXPECT_EQ(session.busAddress, "unix:path=/tmp/bus");
  EXPECT_EQ(session.dataHome, "/home/a/data");
  EXPECT_EQ(session.dataDirectories, "/opt/share");
  EXPECT_EQ(session.locale, "de_DE.UTF-8");
}

TEST(SessionEnvironment, fillsInDefaults) {
  const auto session = read({{"HOME", "/home/a"}, {"XDG_RUNTIME_DIR", "/run/user/1000"}});
  EXPECT_EQ(session.busAddress, "unix:path=/run/user/1000/bus");
  EXPECT_EQ(session.dataHome, "/home/a/.local/share");
  EXPECT_EQ(session.dataDirectories, "/usr/local/share:/usr/share");
  EXPECT_EQ(session.locale, "");
}

TEST(SessionEnvironment, anEmptyEnvironmentHasNothing) {
  const auto session = read({});
  EXPECT_EQ(session.busAddress, "");
  EXPECT_EQ(session.dataHome, "");
  EXPECT_TRUE(serverSockets(session).empty());
}

TEST(SessionEnvironment, theLocaleOfAllWins) {
  EXPECT_EQ(read({{"LC_ALL", "es"}, {"LC_MESSAGES", "de"}, {"LANG", "fr"}}).locale, "es");
  EXPECT_EQ(read({{"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", "fr"}}).locale, "fr");
}

TEST(IsWayland, unlessTheSessionIsAnXServers) {
  EXPECT_FALSE(isWayland({}));
  EXPECT_FALSE(isWayland({.display = ":0"}));
  EXPECT_TRUE(isWayland({.sessionType = "wayland"}));
  EXPECT_TRUE(isWayland({.display = ":0", .waylandDisplay = "wayland-0"}));
  EXPECT_TRUE(isWayland({.sessionType = "x11", .waylandDisplay = "wayland-0"})) << "no X server";
  // A nested compositor that was tried out must not hide the session's own server.
  EXPECT_FALSE(isWayland({.sessionType = "x11", .display = ":0", .waylandDisplay = "wayland-1"}));
}

TEST(IsDesktop, anyOfTheNamesAndNoPartOfOne) {
  EXPECT_TRUE(isDesktop({.currentDesktop = "ubuntu:GNOME"}, "GNOME"));
  EXPECT_TRUE(isDesktop({.currentDesktop = "ubuntu:GNOME"}, "ubuntu"));
  EXPECT_FALSE(isDesktop({.currentDesktop = "NotGNOME:GNOMEr"}, "GNOME"));
  EXPECT_FALSE(isDesktop({}, ""));
}

TEST(WaylandSocket, isFoundByNameOrPath) {
  EXPECT_EQ(waylandSocket({.runtimeFolder = "/run", .waylandDisplay = "wayland-7"}),
            "/run/wayland-7");
  EXPECT_EQ(waylandSocket({.runtimeFolder = "/run", .waylandDisplay = "/tmp/w"}), "/tmp/w");
  EXPECT_EQ(waylandSocket({.runtimeFolder = "/run"}), "/run/wayland-0");
  EXPECT_EQ(waylandSocket({.waylandDisplay = "wayland-7"}), "");
}

TEST(X11Socket, isThatOfALocalServer) {
  EXPECT_EQ(x11Socket(":0"), "/tmp/.X11-unix/X0");
  EXPECT_EQ(x11Socket(":12.1"), "/tmp/.X11-unix/X12");
  EXPECT_EQ(x11Socket("unix:3"), "/tmp/.X11-unix/X3");
  for (const char* other : {"", "0", ":", ":a", ":1a", "host:0", "localhost:10.0", "tcp/host:0"}) {
    EXPECT_FALSE(x11Socket(other)) << other;
  }
}

TEST(BusSocket, isTheFirstPathOfTheAddress) {
  EXPECT_EQ(busSocket("unix:path=/run/user/1/bus"), "/run/user/1/bus");
  EXPECT_EQ(busSocket("unix:path=/run/bus,guid=12"), "/run/bus");
  EXPECT_EQ(busSocket("unix:path=/run/bus;tcp:host=a"), "/run/bus");
  for (const char* other :
       {"", "unix:abstract=/tmp/x", "tcp:host=a", "unix:path=", "unix:path=x"}) {
    EXPECT_FALSE(busSocket(other)) << other;
  }
}

TEST(ServerSockets, thoseOfTheSessionsKind) {
  EXPECT_EQ(serverSockets({.display = ":1"}), Texts{"/tmp/.X11-unix/X1"});
  EXPECT_EQ(serverSockets({.runtimeFolder = "/run",
                           .display = ":1",
                           .waylandDisplay = "wayland-0",
                           .busAddress = "unix:path=/run/bus"}),
            (Texts{"/run/wayland-0", "/run/bus"}));
  EXPECT_TRUE(serverSockets({.display = "host:1"}).empty());
}

TEST(ApplicationFolders, theUsersOwnFirstAndNoneTwice) {
  EXPECT_EQ(applicationFolders({.dataHome = "/home/a/.local/share",
                                .dataDirectories = "/usr/share/:/opt/share::/usr/share"}),
            (Texts{"/home/a/.local/share/applications", "/usr/share/applications",
                   "/opt/share/applications"}));
  EXPECT_EQ(applicationFolders({.dataDirectories = "relative:/"}), Texts{"/applications"});
  EXPECT_TRUE(applicationFolders({}).empty());
}

}  // namespace
}  // namespace velotap
