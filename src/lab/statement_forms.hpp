// The statements of a scenario: their words, where each may stand, and how its words are read.
//
// Pure but for the context, which one parse owns.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "lab/scenario.hpp"
#include "lab/scenario_words.hpp"
#include "lab/touch_words.hpp"

namespace velotap::lab {

/// What later statements need to know of earlier ones, and what is wrong with the present one.
struct StatementContext {
  std::map<std::string, SurfaceSize, std::less<>> devices;
  std::string message;

  /// Notes what is wrong; the nothing that a reader answers then.
  std::nullopt_t fail(std::string what) {
    message = std::move(what);
    return std::nullopt;
  }
};

enum class StatementPlace { stage, stageOrTimed, timed };

struct StatementForm {
  std::string_view word;
  StatementPlace place;
  /// Reads what follows the word; nothing, with a message in the context, when it is malformed.
  /// Words that it leaves are one too many.
  std::optional<Action> (*read)(Words& words, StatementContext& context);
};

/// Null for an unknown word.
[[nodiscard]] const StatementForm* statementForm(std::string_view word);

/// "KEY=VALUE" with a JSON value; nothing, with the reason in `message`, when it is malformed.
[[nodiscard]] std::optional<WriteSetting> readSetting(std::string_view text, std::string& message);

/// The text in double quotes, as messages name words.
[[nodiscard]] std::string inQuotes(std::string_view text);

}  // namespace velotap::lab
