#include "lab/scenario_parser.hpp"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/utf8.hpp"
#include "lab/scenario_words.hpp"
#include "lab/statement_forms.hpp"

namespace velotap::lab {
namespace {

constexpr std::string_view kHeading = "velotap-scenario";
constexpr std::string_view kVersion = "1";

class Parser {
 public:
  [[nodiscard]] std::variant<Scenario, ScenarioError> parse(std::string_view text);

 private:
  bool readLine(std::string_view line);
  bool readHeading(Words& words);
  bool readTime(std::string_view text);
  bool readStatement(std::string_view word, Words& words, bool timed);
  bool refuse(std::string message) {
    context_.message = std::move(message);
    return false;
  }

  Scenario scenario_;
  StatementContext context_;
  bool headed_ = false;
  std::optional<VirtualTime> time_;  // of the last timed statement
};

std::variant<Scenario, ScenarioError> Parser::parse(std::string_view text) {
  int line = 1;
  for (; !text.empty(); ++line) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    if (!readLine(text.substr(0, length))) return ScenarioError{line, context_.message};
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  if (!headed_) return ScenarioError{line, "the first statement is missing: velotap-scenario 1"};
  return std::move(scenario_);
}

bool Parser::readLine(std::string_view line) {
  if (!isUtf8(line)) return refuse("the line is not UTF-8");
  Words probe(line);
  std::string_view word = probe.next();
  if (word.starts_with('@')) word = probe.next();
  Words words(withoutComment(line, word == "set" || word == "system"));
  if (words.empty()) return true;
  word = words.next();
  if (!headed_) {
    if (word != kHeading) return refuse("the first statement is not velotap-scenario 1");
    return readHeading(words);
  }
  const bool timed = word.starts_with('@');
  if (timed) {
    if (!readTime(word.substr(1))) return false;
    if (words.empty()) return refuse("it does not say what happens then");
    word = words.next();
  }
  return readStatement(word, words, timed);
}

bool Parser::readHeading(Words& words) {
  const std::string_view version = words.rest();
  if (version != kVersion) return refuse("version " + inQuotes(version) + " is unknown: only 1 is");
  headed_ = true;
  return true;
}

bool Parser::readTime(std::string_view text) {
  const auto time = parseTime(text);
  if (!time) return refuse(inQuotes(text) + " is no time: seconds with at most nine decimals");
  if (time_ && *time < *time_) return refuse("the time goes back");
  time_ = time;
  return true;
}

bool Parser::readStatement(std::string_view word, Words& words, bool timed) {
  const StatementForm* form = statementForm(word);
  if (form == nullptr) return refuse("unknown statement " + inQuotes(word));
  if (timed && form->place == StatementPlace::stage) {
    return refuse(inQuotes(word) + " belongs to the stage and has no time");
  }
  if (!timed && form->place == StatementPlace::timed) {
    return refuse(inQuotes(word) + " needs a time: @T " + std::string(word));
  }
  if (!timed && time_) return refuse("the stage ends where the first timed statement stands");
  auto action = form->read(words, context_);
  if (!action) return false;
  if (!words.empty()) return refuse("unexpected " + inQuotes(words.rest()));
  if (timed) {
    scenario_.timed.push_back({*time_, *std::move(action)});
  } else {
    scenario_.stage.push_back(*std::move(action));
  }
  return true;
}

}  // namespace

std::variant<Scenario, ScenarioError> parseScenario(std::string_view text) {
  return Parser().parse(text);
}

std::variant<WriteSetting, std::string> parseSetting(std::string_view text) {
  std::string message;
  auto setting = readSetting(text, message);
  if (!setting) return message;
  return *std::move(setting);
}

}  // namespace velotap::lab
