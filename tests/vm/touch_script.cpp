#include "touch_script.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace velotap::vm {
namespace {

/// How many numbers a statement takes, and the smallest value of the last required one.
struct Grammar {
  std::string_view word;
  Verb verb;
  std::size_t fewest;
  std::size_t most;
};

constexpr std::size_t kAnyNumber = 64;

constexpr std::array<Grammar, 16> kGrammar{{
    {"ready", Verb::ready, 0, 0},
    {"touch", Verb::touch, 3, 3},
    {"move", Verb::move, 3, 3},
    {"lift", Verb::lift, 1, 1},
    {"button", Verb::button, 1, 1},
    {"motion", Verb::motion, 2, 2},
    {"wheel", Verb::wheel, 1, 1},
    {"frame", Verb::frame, 0, 1},
    {"repeat", Verb::repeat, 3, 4},
    {"cadence", Verb::cadence, 1, kAnyNumber},
    {"tremor", Verb::tremor, 1, 1},
    {"wait", Verb::wait, 1, 1},
    {"say", Verb::say, 0, 0},
    {"mark", Verb::mark, 0, 0},
    {"destroy", Verb::destroy, 0, 0},
    {"hold", Verb::hold, 0, 0},
}};

constexpr std::array<std::pair<std::string_view, ContactKey>, 5> kKeys{{
    {"major", ContactKey::major},
    {"minor", ContactKey::minor},
    {"size", ContactKey::size},
    {"pressure", ContactKey::pressure},
    {"orientation", ContactKey::orientation},
}};

constexpr std::string_view kBlank = " \t\r\n";

/// The next word of `rest`, which is shortened by it; empty at the end.
std::string_view takeWord(std::string_view& rest) noexcept {
  const std::size_t start = std::min(rest.find_first_not_of(kBlank), rest.size());
  rest.remove_prefix(start);
  const std::string_view word = rest.substr(0, rest.find_first_of(kBlank));
  rest.remove_prefix(word.size());
  return word;
}

std::optional<int> numberOf(std::string_view word) noexcept {
  int value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return value;
}

/// Adds what `word` says to the statement; the error text when it says nothing sensible.
std::string addArgument(Statement& statement, std::string_view word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos || statement.verb != Verb::touch) {
    const std::optional<int> number = numberOf(word);
    if (!number) return "not a number: " + std::string(word);
    statement.numbers.push_back(*number);
    return {};
  }
  const std::string_view name = word.substr(0, equals);
  const auto* const key = std::find_if(kKeys.begin(), kKeys.end(),
                                       [name](const auto& entry) { return entry.first == name; });
  if (key == kKeys.end()) return "unknown key: " + std::string(name);
  const std::optional<int> value = numberOf(word.substr(equals + 1));
  if (!value) return "not a number: " + std::string(word);
  statement.contact.emplace_back(key->second, *value);
  return {};
}

/// Times and counts must not be negative: which numbers of a statement those are.
bool negativeTimeOrCount(const Statement& statement) noexcept {
  const auto& numbers = statement.numbers;
  switch (statement.verb) {
    case Verb::frame:
    case Verb::cadence:
    case Verb::tremor:
    case Verb::wait:
    case Verb::button:
      return std::any_of(numbers.begin(), numbers.end(), [](int n) { return n < 0; });
    case Verb::repeat:
      return numbers[0] < 0 || (numbers.size() == 4 && numbers[3] < 0);
    case Verb::ready:
    case Verb::touch:
    case Verb::move:
    case Verb::lift:
    case Verb::motion:
    case Verb::wheel:
    case Verb::say:
    case Verb::mark:
    case Verb::destroy:
    case Verb::hold:
      break;
  }
  return false;
}

ParsedLine refusal(std::string text) {
  return {.statement = std::nullopt, .error = std::move(text)};
}

}  // namespace

ParsedLine parseLine(std::string_view line) {
  std::string_view rest = line.substr(0, line.find('#'));
  const std::string_view word = takeWord(rest);
  if (word.empty()) return {};
  const auto* const grammar =
      std::find_if(kGrammar.begin(), kGrammar.end(),
                   [word](const Grammar& entry) { return entry.word == word; });
  if (grammar == kGrammar.end()) return refusal("unknown statement: " + std::string(word));

  Statement statement{.verb = grammar->verb, .numbers = {}, .contact = {}, .text = {}};
  if (statement.verb == Verb::say || statement.verb == Verb::mark) {
    const std::size_t start = std::min(rest.find_first_not_of(kBlank), rest.size());
    const std::size_t end = rest.find_last_not_of(kBlank);
    if (start < rest.size()) statement.text = rest.substr(start, end + 1 - start);
    return {.statement = std::move(statement), .error = {}};
  }
  for (std::string_view next = takeWord(rest); !next.empty(); next = takeWord(rest)) {
    if (std::string error = addArgument(statement, next); !error.empty()) {
      return refusal(std::move(error));
    }
  }
  const std::size_t count = statement.numbers.size();
  if (count < grammar->fewest || count > grammar->most) {
    return refusal(std::string(word) + ": wrong number of arguments");
  }
  if (negativeTimeOrCount(statement)) return refusal(std::string(word) + ": negative");
  return {.statement = std::move(statement), .error = {}};
}

}  // namespace velotap::vm
