#include "adapters/linux/keyboard/gnome_layout_source.hpp"

#include "adapters/linux/dconf/dconf_snapshot.hpp"

namespace velotap {
namespace {

constexpr const char* kSchema = "org.gnome.desktop.input-sources";

}  // namespace

std::optional<LayoutNames> layoutOfSources(
    const std::vector<std::pair<std::string, std::string>>& sources) {
  for (const auto& [kind, name] : sources) {
    if (kind != "xkb" || name.empty()) continue;
    const auto plus = name.find('+');
    LayoutNames names;
    names.layout = name.substr(0, plus);
    if (plus != std::string::npos) names.variant = name.substr(plus + 1);
    return names;
  }
  return std::nullopt;
}

void GnomeLayoutSource::start(std::function<void()> changed) {
  listenWith(std::move(changed));
  watch_.emplace(loop_, places_.databases, [this] { read(); });
  read();
}

void GnomeLayoutSource::read() {
  std::optional<LayoutNames> names;
  {
    const DconfSnapshot settings = DconfSnapshot::load(places_);
    for (const char* key : {"mru-sources", "sources"}) {
      if (names) break;
      if (const auto sources = settings.pairs(kSchema, key)) names = layoutOfSources(*sources);
    }
  }
  if (!names || names == compiled_) return;
  compiled_ = names;
  know(groupAt(compileNames(*names), 0));
}

}  // namespace velotap
