#include "adapters/linux/workspace/desktop_entry.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <utility>

#include "adapters/linux/files/entry_value.hpp"
#include "base/utf8.hpp"

namespace velotap {
namespace {

constexpr std::string_view kBlank = " \t\r";

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

/// Takes the next line off `rest`.
std::string_view nextLine(std::string_view& rest) {
  const auto end = rest.find('\n');
  const auto line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return trimmed(line);
}

/// Words of an Exec value: split at blanks, double quotes group, a backslash inside them quotes.
std::vector<std::string> wordsOf(std::string_view exec) {
  std::vector<std::string> words;
  std::string word;
  bool inWord = false;
  bool quoted = false;
  for (std::size_t i = 0; i < exec.size(); ++i) {
    const char c = exec[i];
    if (c == '"') {
      quoted = !quoted;
      inWord = true;
    } else if (quoted && c == '\\' && i + 1 < exec.size()) {
      word += exec[++i];
    } else if (!quoted && (c == ' ' || c == '\t')) {
      if (inWord) words.push_back(std::exchange(word, {}));
      inWord = false;
    } else {
      word += c;
      inWord = true;
    }
  }
  if (inWord) words.push_back(word);
  return words;
}

std::string baseName(std::string_view path) {
  return std::string(path.substr(path.find_last_of('/') + 1));
}

bool isAssignment(std::string_view word) {
  const auto equals = word.find('=');
  return equals != std::string_view::npos && equals > 0 && word.find('/') > equals &&
         word.front() != '-';
}

/// Programs whose name says nothing about the application that they run.
bool isInterpreter(std::string_view program) {
  constexpr std::array kNames = {"sh",         "bash", "dash",        "perl",       "ruby",
                                 "java",       "gjs",  "node",        "pkexec",     "sudo",
                                 "snap",       "wine", "mono",        "exo-open",   "xdg-open",
                                 "gtk-launch", "gio",  "dbus-launch", "systemd-run"};
  if (std::find(kNames.begin(), kNames.end(), program) != kNames.end()) return true;
  return program.starts_with("python") || program.starts_with("electron");
}

/// Collects one localised key: the value in the best language seen so far.
class Localised {
 public:
  explicit Localised(const std::vector<std::string>& languages) : languages_(languages) {}

  void offer(std::string_view suffix, std::string_view value) {
    std::size_t rank = languages_.size();
    if (!suffix.empty()) {
      const auto found = std::find(languages_.begin(), languages_.end(), suffix);
      if (found == languages_.end()) return;
      rank = static_cast<std::size_t>(found - languages_.begin());
    }
    if (rank > rank_ || !isUtf8(value)) return;
    std::string text = unescapedEntryValue(value);
    if (text.empty()) return;
    rank_ = rank;
    text_ = std::move(text);
  }
  [[nodiscard]] std::string take() { return std::move(text_); }

 private:
  const std::vector<std::string>& languages_;
  std::size_t rank_ = std::numeric_limits<std::size_t>::max();
  std::string text_;
};

/// The keys of the one group that matters, as they come.
struct Fields {
  Localised name;
  Localised icon;
  std::string type;
  DesktopEntry entry;

  void set(std::string_view key, std::string_view suffix, std::string_view value) {
    if (key == "Name") return name.offer(suffix, value);
    if (key == "Icon") return icon.offer(suffix, value);
    if (!suffix.empty()) return;
    if (key == "Type") type = value;
    if (key == "StartupWMClass") entry.windowClass = unescapedEntryValue(value);
    if (key == "Exec") entry.program = programOfExec(unescapedEntryValue(value));
    if (key == "NoDisplay") entry.inMenus = value != "true";
    if (key == "Hidden") entry.hidden = value == "true";
  }
};

void readLine(std::string_view line, Fields& fields) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos || line.front() == '#') return;
  std::string_view key = trimmed(line.substr(0, equals));
  const std::string_view value = trimmed(line.substr(equals + 1));
  std::string_view suffix;
  if (const auto bracket = key.find('['); bracket != std::string_view::npos) {
    if (key.back() != ']' || key.size() == bracket + 2) return;
    suffix = key.substr(bracket + 1, key.size() - bracket - 2);
    key = key.substr(0, bracket);
  }
  fields.set(key, suffix, value);
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& languages) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (nextLine(text) != "[Desktop Entry]") {
    if (text.empty()) return std::nullopt;
  }
  Fields fields{
      .name = Localised(languages), .icon = Localised(languages), .type = {}, .entry = {}};
  while (!text.empty()) {
    const std::string_view line = nextLine(text);
    if (line.starts_with('[')) break;
    if (!line.empty()) readLine(line, fields);
  }
  DesktopEntry entry = std::move(fields.entry);
  entry.name = fields.name.take();
  entry.icon = fields.icon.take();
  if (entry.hidden) return entry;
  if (fields.type != "Application" || entry.name.empty()) return std::nullopt;
  return entry;
}

std::vector<std::string> languageSuffixes(std::string_view locale) {
  std::string_view modifier;
  if (const auto at = locale.find('@'); at != std::string_view::npos) {
    modifier = locale.substr(at);
    locale = locale.substr(0, at);
  }
  locale = locale.substr(0, locale.find('.'));
  const std::string_view language = locale.substr(0, locale.find('_'));
  if (language.empty() || language == "C" || language == "POSIX") return {};

  std::vector<std::string> suffixes;
  const auto add = [&suffixes](std::string_view base, std::string_view mark) {
    std::string suffix(base);
    suffix += mark;
    if (std::find(suffixes.begin(), suffixes.end(), suffix) == suffixes.end()) {
      suffixes.push_back(std::move(suffix));
    }
  };
  add(locale, modifier);
  add(locale, {});
  add(language, modifier);
  add(language, {});
  return suffixes;
}

std::string programOfExec(std::string_view exec) {
  const std::vector<std::string> words = wordsOf(exec);
  auto word = words.begin();
  while (word != words.end() && (baseName(*word) == "env" || isAssignment(*word))) ++word;
  if (word == words.end()) return {};
  std::string program = baseName(*word);
  if (program == "flatpak") {
    constexpr std::string_view kCommand = "--command=";
    for (; word != words.end(); ++word) {
      if (word->starts_with(kCommand)) return baseName(word->substr(kCommand.size()));
    }
    return {};
  }
  return isInterpreter(program) ? std::string() : program;
}

}  // namespace velotap
