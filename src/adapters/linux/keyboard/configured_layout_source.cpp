#include "adapters/linux/keyboard/configured_layout_source.hpp"

#include <algorithm>
#include <utility>

#include "adapters/linux/files/read_file.hpp"

namespace velotap {
namespace {

constexpr std::size_t kLargestConfiguration = std::size_t{4} * 1024 * 1024;

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(" \t\r");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

template <typename Line>
void forEachLine(std::string_view text, Line line) {
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    line(trimmed(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

std::string_view unquoted(std::string_view text) {
  if (text.size() >= 2 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0]) {
    return text.substr(1, text.size() - 2);
  }
  return text;
}

/// The quoted texts of a line.
std::vector<std::string_view> quotedTexts(std::string_view line) {
  std::vector<std::string_view> texts;
  while (true) {
    const auto begin = line.find('"');
    const auto end = begin == std::string_view::npos ? begin : line.find('"', begin + 1);
    if (end == std::string_view::npos) return texts;
    texts.push_back(line.substr(begin + 1, end - begin - 1));
    line.remove_prefix(end + 1);
  }
}

std::optional<LayoutNames> ifItHasALayout(LayoutNames names) {
  if (names.layout.empty()) return std::nullopt;
  return names;
}

}  // namespace

std::optional<LayoutNames> layoutOfAssignments(std::string_view text) {
  LayoutNames names;
  forEachLine(text, [&](std::string_view line) {
    const auto equal = line.find('=');
    if (line.starts_with('#') || equal == std::string_view::npos) return;
    const std::string value(unquoted(trimmed(line.substr(equal + 1))));
    const std::string_view key = trimmed(line.substr(0, equal));
    if (key == "XKBMODEL") names.model = value;
    if (key == "XKBLAYOUT") names.layout = value;
    if (key == "XKBVARIANT") names.variant = value;
    if (key == "XKBOPTIONS") names.options = value;
  });
  return ifItHasALayout(std::move(names));
}

std::optional<LayoutNames> layoutOfServerOptions(std::string_view text) {
  LayoutNames names;
  forEachLine(text, [&](std::string_view line) {
    if (!line.starts_with("Option")) return;
    const auto texts = quotedTexts(line);
    if (texts.size() != 2) return;
    const std::string value(texts[1]);
    if (texts[0] == "XkbModel") names.model = value;
    if (texts[0] == "XkbLayout") names.layout = value;
    if (texts[0] == "XkbVariant") names.variant = value;
    if (texts[0] == "XkbOptions") names.options = value;
  });
  return ifItHasALayout(std::move(names));
}

ConfiguredLayoutSource::ConfiguredLayoutSource(DescriptorLoop& loop, const std::string& systemRoot)
    : loop_(loop),
      files_{systemRoot + "/etc/default/keyboard", systemRoot + "/etc/vconsole.conf",
             systemRoot + "/etc/X11/xorg.conf.d/00-keyboard.conf"} {}

void ConfiguredLayoutSource::start(std::function<void()> changed) {
  listenWith(std::move(changed));
  watch_.emplace(loop_, files_, [this] { read(); });
  read();
}

void ConfiguredLayoutSource::read() {
  for (const auto& path : files_) {
    const std::string text = readFile(path, kLargestConfiguration).text;
    const auto names = path.ends_with(".conf") && text.find("Section") != std::string::npos
                           ? layoutOfServerOptions(text)
                           : layoutOfAssignments(text);
    const auto keys = names ? groupAt(compileNames(*names), 0) : std::nullopt;
    if (keys) return know(keys);
  }
}

}  // namespace velotap
