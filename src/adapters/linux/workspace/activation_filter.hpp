// Decides which reports of a front window are news, and which empty ones are only the moment
// between two windows.
//
// Window managers take the focus from one window before they give it to the next, and say so. An
// empty report therefore counts only once it has stood for a while. Pure: time is handed in, in
// seconds; no timer, no allocation.
#pragma once

#include <optional>

namespace velotap {

/// How long "no window" must stand before it is believed. The gap between two windows is a few
/// milliseconds; a person who looks at an empty desktop does so for longer than this.
inline constexpr double kEmptyGrace = 0.1;

class ActivationFilter {
 public:
  enum class Verdict {
    report,  ///< tell the observers now
    wait,    ///< ask `settle` at `deadline`
    ignore,  ///< nothing new
  };

  [[nodiscard]] Verdict windowInFront() noexcept;
  [[nodiscard]] Verdict nothingInFront(double now) noexcept;
  /// `report` when an empty report has stood long enough, `wait` when it has not yet, `ignore`
  /// when a window came in between.
  [[nodiscard]] Verdict settle(double now) noexcept;
  /// When to call `settle`; nothing while no empty report is pending.
  [[nodiscard]] std::optional<double> deadline() const noexcept;
  /// Forgets everything: the next report is the first one.
  void reset() noexcept { *this = {}; }

 private:
  enum class State { window, emptyPending, empty };
  State state_ = State::window;
  double emptySince_ = 0;
};

}  // namespace velotap
