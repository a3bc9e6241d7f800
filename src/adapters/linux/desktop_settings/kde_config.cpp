#include "adapters/linux/desktop_settings/kde_config.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace velotap {
namespace {

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(" \t\r");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

std::optional<char> hexadecimal(std::string_view digits) {
  int value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.size() != 2 || error != std::errc() || end != digits.data() + 2) return std::nullopt;
  return static_cast<char>(value);
}

std::string unescaped(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char code = text[++i];
    if (code == 'x') {
      if (const auto character = hexadecimal(text.substr(i + 1, 2))) {
        plain += *character;
        i += 2;
        continue;
      }
    }
    switch (code) {
      case 's':
        plain += ' ';
        break;
      case 't':
        plain += '\t';
        break;
      case 'n':
        plain += '\n';
        break;
      case 'r':
        plain += '\r';
        break;
      case '\\':
        plain += '\\';
        break;
      default:
        plain += {'\\', code};  // not an escape
    }
  }
  return plain;
}

struct GroupLine {
  KdeConfig::Group group;
  bool immutable = false;
};

/// "[Libinput][1452][613][Magic Trackpad]", and "[$i]" at the end for an immutable group.
std::optional<GroupLine> groupOf(std::string_view line) {
  GroupLine result;
  while (line.starts_with('[')) {
    const auto end = line.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view name = line.substr(1, end - 1);
    line.remove_prefix(end + 1);
    if (name.starts_with('$')) {
      result.immutable = name.find('i') != std::string_view::npos;
    } else {
      result.group.push_back(unescaped(name));
    }
  }
  if (!line.empty()) return std::nullopt;
  return result;
}

}  // namespace

void KdeConfig::add(std::string_view text) {
  GroupLine current;
  // Sealed for the files that follow, not for the one that says so.
  std::set<Group> sealed;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    const std::string_view line = trimmed(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty() || line.starts_with('#')) continue;
    if (line.starts_with('[')) {
      // The lines of a group that cannot be read belong to no group at all.
      current = groupOf(line).value_or(GroupLine{.group = {""}, .immutable = false});
      if (current.immutable) sealed.insert(current.group);
      continue;
    }
    addEntry(current.group, line);
  }
  immutableGroups_.merge(sealed);
}

void KdeConfig::addEntry(const Group& group, std::string_view line) {
  const auto equal = line.find('=');
  if (equal == std::string_view::npos || immutableGroups_.contains(group)) return;
  std::string_view key = trimmed(line.substr(0, equal));
  bool immutable = false;
  if (const auto mark = key.find("[$"); mark != std::string_view::npos) {
    immutable = key.find('i', mark) != std::string_view::npos;
    key = trimmed(key.substr(0, mark));
  }
  if (key.empty() || key.find('[') != std::string_view::npos) return;
  auto& fixed = immutableKeys_[group];
  if (fixed.contains(key)) return;
  groups_[group].insert_or_assign(std::string(key), unescaped(trimmed(line.substr(equal + 1))));
  if (immutable) fixed.emplace(key);
}

std::optional<bool> kdeBoolean(std::string_view text) noexcept {
  constexpr std::array<std::string_view, 4> kOn = {"true", "on", "yes", "1"};
  constexpr std::array<std::string_view, 4> kOff = {"false", "off", "no", "0"};
  if (std::ranges::find(kOn, text) != kOn.end()) return true;
  if (std::ranges::find(kOff, text) != kOff.end()) return false;
  return std::nullopt;
}

std::optional<int> kdeInteger(std::string_view text) noexcept {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace velotap
