#include "adapters/linux/services/autostart_item.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

#include "adapters/linux/files/entry_value.hpp"
#include "adapters/linux/files/read_file.hpp"
#include "adapters/linux/preferences/atomic_file.hpp"
#include "adapters/linux/services/child_command.hpp"

namespace velotap {
namespace {

constexpr const char* kFileName = "app.norwend.velotap.desktop";
constexpr const char* kLoginItemsPage =
    "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";
constexpr std::size_t kLargestEntry = 65536;

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// Whether the first character only says that the second one stands for itself.
bool escapes(std::string_view text, bool quoted) {
  return text.size() > 1 && ((text[0] == '\\' && quoted) || text.starts_with("%%"));
}

// The first word of a command line, without its quotes.
std::string firstWord(std::string_view command) {
  std::string word;
  bool quoted = false;
  for (std::size_t i = 0; i < command.size(); ++i) {
    const char c = command[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ' ' && !quoted) {
      break;
    } else if (escapes(command.substr(i), quoted)) {
      word += command[++i];
    } else {
      word += c;
    }
  }
  return word;
}

}  // namespace

AutostartEntry parseAutostartEntry(std::string_view text) {
  AutostartEntry entry;
  bool inside = false;
  bool application = false;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('[')) {
      inside = line == "[Desktop Entry]";
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!inside || line.starts_with('#') || equals == std::string_view::npos) continue;
    const std::string_view key = trimmed(line.substr(0, equals));
    const std::string_view value = trimmed(line.substr(equals + 1));
    if (key == "Type") application = value == "Application";
    // These escapes come before those of the command inside.
    if (key == "Exec") entry.program = firstWord(unescapedEntryValue(value));
    if (key == "Hidden") entry.disabled = entry.disabled || value == "true";
    if (key == "X-GNOME-Autostart-enabled") entry.disabled = entry.disabled || value == "false";
  }
  entry.valid = application && !entry.program.empty();
  return entry;
}

std::string autostartEntry(std::string_view program) {
  // Inside double quotes; then once more, because the value as a whole has escapes of its own.
  std::string exec = "\"";
  for (const char c : program) {
    if (c == '"' || c == '`' || c == '$') exec += "\\\\";
    if (c == '\\') exec += "\\\\\\";
    if (c == '%') exec += '%';
    exec += c;
  }
  exec += '"';
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Version=1.0\n"
         "Name=Velotap\n"
         "Exec=" +
         exec +
         "\n"
         "Icon=app.norwend.velotap\n"
         "Terminal=false\n"
         "NoDisplay=true\n"
         "X-GNOME-Autostart-enabled=true\n";
}

AutostartItem::AutostartItem(std::string folder, std::string program, UrlOpener& urls)
    : folder_(std::move(folder)),
      file_(folder_ + "/" + kFileName),
      program_(std::move(program)),
      urls_(urls) {}

LoginItemStatus AutostartItem::status() {
  const FileContent content = readFile(file_, kLargestEntry);
  switch (content.state) {
    case FileContent::State::absent:
      return LoginItemStatus::notRegistered;
    case FileContent::State::unreadable:
    case FileContent::State::notAFile:
    case FileContent::State::tooLarge:
      return LoginItemStatus::notFound;
    case FileContent::State::present:
      break;
  }
  const AutostartEntry entry = parseAutostartEntry(content.text);
  // An entry that only says "hidden" is how some tools switch one off.
  if (entry.disabled) return LoginItemStatus::requiresApproval;
  if (!entry.valid || !findProgram(entry.program)) return LoginItemStatus::notFound;
  return LoginItemStatus::enabled;
}

std::optional<std::string> AutostartItem::registerProgram() {
  if (auto error = createFolder(folder_)) return error;
  return replaceFile(file_, autostartEntry(program_), FileCalls::system());
}

std::optional<std::string> AutostartItem::unregisterProgram() {
  if (::unlink(file_.c_str()) == 0 || errno == ENOENT) return std::nullopt;
  return file_ + ": " + std::strerror(errno);
}

void AutostartItem::openSettings() {
  urls_.open(kLoginItemsPage, [&urls = urls_, folder = folder_](bool taken) {
    if (!taken) urls.open("file://" + folder, {});
  });
}

}  // namespace velotap
