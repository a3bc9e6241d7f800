// Replays of one scenario that must come to the same verdict: what the fingers did is the same,
// only told otherwise.
//
// The verdict is what the program did about it: events posted, clicks passed on, outcomes of taps.
// Measured numbers are no part of it, because they change in the last digits.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "lab/scenario.hpp"

namespace velotap::test {

struct Rerun {
  std::string_view name;
  /// Tells the scenario otherwise.
  void (*change)(lab::Scenario& scenario);
  /// What a verdict of the scenario becomes when it is told so.
  void (*expect)(std::vector<std::string>& verdict);
  /// Whether a gesture goes through the same steps.
  bool sameSteps = true;
};

/// permuted, identifiers, mirrored, duplicated, shifted.
[[nodiscard]] const std::array<Rerun, 5>& reruns();

/// The verdict in a replay's lines, one text for each part of it.
[[nodiscard]] std::vector<std::string> verdictOf(const std::vector<std::string>& lines);

/// Leaves only the beginnings and ends of gestures.
void dropSteps(std::vector<std::string>& verdict);

}  // namespace velotap::test
