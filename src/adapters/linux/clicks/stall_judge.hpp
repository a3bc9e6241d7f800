// Whether the events of a grabbed device are still being served.
//
// Looked at now and then, while events wait: the same ones waiting for half a second with nothing
// served in between means that nobody will. Pure; times are seconds.
#pragma once

#include <cstdint>
#include <optional>

namespace velotap {

class StallJudge {
 public:
  static constexpr double kLimit = 0.5;

  /// `served` counts what has been served so far. True when the service has stalled.
  [[nodiscard]] constexpr bool observe(bool eventsWait, std::uint64_t served, double now) noexcept {
    if (!eventsWait || !since_ || served != served_) {
      since_ = eventsWait ? std::optional(now) : std::nullopt;
      served_ = served;
      return false;
    }
    return now - *since_ >= kLimit;
  }

 private:
  std::optional<double> since_;
  std::uint64_t served_ = 0;
};

}  // namespace velotap
