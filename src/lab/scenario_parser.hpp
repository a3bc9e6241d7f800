// Reads the text form of a scenario.
//
// Pure; any thread. The whole text is read before anything is answered, so a scenario with an error
// anywhere is never replayed in part.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "lab/scenario.hpp"

namespace velotap::lab {

struct ScenarioError {
  int line = 0;         ///< counted from 1
  std::string message;  ///< what is wrong there
};

[[nodiscard]] std::variant<Scenario, ScenarioError> parseScenario(std::string_view text);

/// "KEY=VALUE" with a JSON value, as in a `set` statement; or what is wrong with it.
[[nodiscard]] std::variant<WriteSetting, std::string> parseSetting(std::string_view text);

}  // namespace velotap::lab
