// Named notifications inside the process: who posts does not know who listens.
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

#include "base/observer_list.hpp"

namespace velotap {

/// Any thread. Observers run on the posting thread, without a lock held.
class NotificationCenter {
 public:
  [[nodiscard]] Observation observe(std::string_view name, std::function<void()> observer);
  /// Sees every notification by name, for diagnostics and replays.
  [[nodiscard]] Observation observeAll(std::function<void(std::string_view)> observer);
  void post(std::string_view name);

 private:
  std::mutex lock_;
  std::map<std::string, ObserverList<>, std::less<>> observers_;
  ObserverList<std::string_view> all_;
};

}  // namespace velotap
