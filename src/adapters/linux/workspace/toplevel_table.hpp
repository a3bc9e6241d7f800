// Which of a compositor's windows is in front, out of the separate facts that a toplevel protocol
// sends about each.
//
// A window counts from when it becomes active until it stops being so or closes. Where several are
// active at once, one for each seat, the one that became active last is in front. A window that is
// not described to the end yet is never in front: it would be taken for one without a name. Main
// thread; holds no protocol object, only its address as a key.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "adapters/linux/workspace/front_source.hpp"

namespace velotap {

class ToplevelTable {
 public:
  using Key = const void*;

  void open(Key key) { windows_.try_emplace(key); }
  void close(Key key) { windows_.erase(key); }
  void setAppId(Key key, std::string appId) { windows_[key].facts.appId = std::move(appId); }
  void setPid(Key key, int pid) { windows_[key].facts.pid = pid; }
  void setActive(Key key, bool active);
  /// What is known of the window is complete.
  void setDescribed(Key key) { windows_[key].described = true; }
  [[nodiscard]] std::optional<FrontWindow> front() const;

 private:
  struct Window {
    FrontWindow facts;
    bool described = false;
    unsigned long activated = 0;  ///< counts activations; 0 while the window is not active
  };
  std::map<Key, Window> windows_;
  unsigned long activations_ = 0;
};

/// Passes on what `ToplevelTable::front` says only when it changed since the last time.
class FrontChange {
 public:
  [[nodiscard]] bool changedTo(const std::optional<FrontWindow>& front);

 private:
  bool first_ = true;
  std::optional<FrontWindow> last_;
};

}  // namespace velotap
