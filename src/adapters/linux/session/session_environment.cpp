#include "adapters/linux/session/session_environment.hpp"

#include <algorithm>
#include <cstdlib>

namespace velotap {
namespace {

std::vector<std::string> splitAtColons(std::string_view list) {
  std::vector<std::string> parts;
  while (!list.empty()) {
    const auto end = list.find(':');
    if (end != 0) parts.emplace_back(list.substr(0, end));
    if (end == std::string_view::npos) break;
    list.remove_prefix(end + 1);
  }
  return parts;
}

bool isDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

SessionEnvironment SessionEnvironment::read(const Lookup& lookup) {
  const auto get = [&lookup](const char* name) {
    const char* const value = lookup(name);
    return std::string(value == nullptr ? "" : value);
  };
  const auto firstOf = [&get](std::initializer_list<const char*> variables) {
    for (const char* variable : variables) {
      if (std::string value = get(variable); !value.empty()) return value;
    }
    return std::string();
  };
  SessionEnvironment session{
      .sessionType = get("XDG_SESSION_TYPE"),
      .currentDesktop = get("XDG_CURRENT_DESKTOP"),
      .runtimeFolder = get("XDG_RUNTIME_DIR"),
      .display = get("DISPLAY"),
      .waylandDisplay = get("WAYLAND_DISPLAY"),
      .busAddress = get("DBUS_SESSION_BUS_ADDRESS"),
      .dataHome = get("XDG_DATA_HOME"),
      .dataDirectories = get("XDG_DATA_DIRS"),
      .locale = firstOf({"LC_ALL", "LC_MESSAGES", "LANG"}),
  };
  if (session.busAddress.empty() && !session.runtimeFolder.empty()) {
    session.busAddress = "unix:path=" + session.runtimeFolder + "/bus";
  }
  if (const std::string home = get("HOME"); session.dataHome.empty() && !home.empty()) {
    session.dataHome = home + "/.local/share";
  }
  if (session.dataDirectories.empty()) session.dataDirectories = "/usr/local/share:/usr/share";
  return session;
}

SessionEnvironment SessionEnvironment::ofThisProcess() {
  return read([](const char* name) { return std::getenv(name); });
}

bool isWayland(const SessionEnvironment& session) {
  if (session.sessionType == "x11" && !session.display.empty()) return false;
  return session.sessionType == "wayland" || !session.waylandDisplay.empty();
}

bool isDesktop(const SessionEnvironment& session, std::string_view name) {
  const auto parts = splitAtColons(session.currentDesktop);
  return std::find(parts.begin(), parts.end(), name) != parts.end();
}

std::string waylandSocket(const SessionEnvironment& session) {
  std::string name = session.waylandDisplay.empty() ? "wayland-0" : session.waylandDisplay;
  if (name.starts_with('/')) return name;
  if (session.runtimeFolder.empty()) return {};
  return session.runtimeFolder + "/" + name;
}

std::optional<std::string> x11Socket(std::string_view display) {
  const auto colon = display.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view host = display.substr(0, colon);
  if (!host.empty() && host != "unix") return std::nullopt;
  std::string_view number = display.substr(colon + 1);
  number = number.substr(0, number.find('.'));
  if (!isDigits(number)) return std::nullopt;
  return "/tmp/.X11-unix/X" + std::string(number);
}

std::optional<std::string> busSocket(std::string_view address) {
  constexpr std::string_view kPath = "unix:path=";
  if (!address.starts_with(kPath)) return std::nullopt;
  address.remove_prefix(kPath.size());
  const std::string_view path = address.substr(0, address.find_first_of(",;"));
  if (!path.starts_with('/')) return std::nullopt;
  return std::string(path);
}

std::vector<std::string> serverSockets(const SessionEnvironment& session) {
  std::vector<std::string> sockets;
  if (isWayland(session)) {
    if (auto socket = waylandSocket(session); !socket.empty()) sockets.push_back(socket);
    if (auto socket = busSocket(session.busAddress)) sockets.push_back(*socket);
  } else if (auto socket = x11Socket(session.display)) {
    sockets.push_back(*socket);
  }
  return sockets;
}

std::vector<std::string> applicationFolders(const SessionEnvironment& session) {
  std::vector<std::string> folders;
  const auto add = [&folders](std::string folder) {
    // A relative folder would mean something else after each change of the working folder.
    if (!folder.starts_with('/')) return;
    while (folder.ends_with('/')) folder.pop_back();
    folder += "/applications";
    if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
      folders.push_back(std::move(folder));
    }
  };
  add(session.dataHome);
  for (auto& folder : splitAtColons(session.dataDirectories)) add(std::move(folder));
  return folders;
}

}  // namespace velotap
