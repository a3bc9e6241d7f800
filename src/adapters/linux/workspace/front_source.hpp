// One way of learning which application is in front, from one kind of desktop.
//
// Main thread. A source connects without waiting for the server's answers, reports through its
// listener, and holds its connection until it is destroyed. It never decides what to do when the
// desktop goes away: it says so and is done; source_chooser.hpp does the rest. The listener never
// destroys the source from inside a callback.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace velotap {

/// Where the answer comes from. `none`: nowhere, and the status text says why.
enum class FrontSourceKind { none, x11, wlroots, kdeWindowManagement, kdeScript, gnomeExtension };

/// The name under which traces and tests know a source.
[[nodiscard]] constexpr const char* frontSourceName(FrontSourceKind kind) noexcept {
  switch (kind) {
    case FrontSourceKind::none:
      return "none";
    case FrontSourceKind::x11:
      return "x11";
    case FrontSourceKind::wlroots:
      return "wlroots";
    case FrontSourceKind::kdeWindowManagement:
      return "kdeWindowManagement";
    case FrontSourceKind::kdeScript:
      return "kdeScript";
    case FrontSourceKind::gnomeExtension:
      return "gnomeExtension";
  }
  return "";
}

/// What a desktop says of the window in front. Every text may be empty.
struct FrontWindow {
  std::string appId{};        ///< Wayland app id, or the desktop-file id where the desktop knows it
  std::string windowClass{};  ///< class half of WM_CLASS
  std::string instance{};     ///< instance half of WM_CLASS
  int pid = 0;                ///< 0 when unknown; as the window claims it, so never proof
  friend bool operator==(const FrontWindow&, const FrontWindow&) = default;
};

/// Why a source gave up. `absent`: the desktop was reached and does not offer this, so asking again
/// is pointless until it is another desktop. `unreachable`: there was nobody to ask, or no more.
enum class SourceFailure { absent, unreachable };

class FrontSource {
 public:
  struct Listener {
    /// The source answers from now on; the window in front follows at once.
    std::function<void()> live;
    /// Another window came to the front; none when the desktop says that there is none.
    std::function<void(std::optional<FrontWindow>)> front;
    /// Connected, but whoever would answer is not there (yet). `live` may still follow.
    std::function<void(std::string reason)> dormant;
    /// The source is of no more use; nothing follows.
    std::function<void(SourceFailure, std::string reason)> failed;
  };

  virtual ~FrontSource() = default;
  /// Called once. May call back before it returns.
  virtual void start(Listener listener) = 0;
};

}  // namespace velotap
