// What the environment says of the desktop session: which servers there are and where.
//
// Read once, on the thread that starts the program; afterwards a plain value, so that the
// decisions made from it can be tried with any desktop. Pure functions besides `read`.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velotap {

struct SessionEnvironment {
  std::string sessionType{};      ///< XDG_SESSION_TYPE
  std::string currentDesktop{};   ///< XDG_CURRENT_DESKTOP
  std::string runtimeFolder{};    ///< XDG_RUNTIME_DIR
  std::string display{};          ///< DISPLAY
  std::string waylandDisplay{};   ///< WAYLAND_DISPLAY
  std::string busAddress{};       ///< DBUS_SESSION_BUS_ADDRESS, or the user's bus
  std::string dataHome{};         ///< XDG_DATA_HOME or its default; empty without a home
  std::string dataDirectories{};  ///< XDG_DATA_DIRS or its default, separated by colons
  std::string locale{};           ///< the locale of messages

  using Lookup = std::function<const char*(const char* name)>;
  [[nodiscard]] static SessionEnvironment read(const Lookup& lookup);
  [[nodiscard]] static SessionEnvironment ofThisProcess();
};

/// The session is a compositor's. An X server inside it serves old programs only.
[[nodiscard]] bool isWayland(const SessionEnvironment& session);

/// Whether the session says that it is this desktop, or one that is built on it.
[[nodiscard]] bool isDesktop(const SessionEnvironment& session, std::string_view name);

/// The compositor's socket; empty when nothing tells where it could be.
[[nodiscard]] std::string waylandSocket(const SessionEnvironment& session);

/// The X server's socket, when it is a local one: ":0" and "unix:0.1", not "host:0".
[[nodiscard]] std::optional<std::string> x11Socket(std::string_view display);

/// The session bus's socket, when its address names a file.
[[nodiscard]] std::optional<std::string> busSocket(std::string_view address);

/// Every file whose appearance may mean that a server of this session is back.
[[nodiscard]] std::vector<std::string> serverSockets(const SessionEnvironment& session);

/// The folders of desktop entries, the user's own first.
[[nodiscard]] std::vector<std::string> applicationFolders(const SessionEnvironment& session);

}  // namespace velotap
