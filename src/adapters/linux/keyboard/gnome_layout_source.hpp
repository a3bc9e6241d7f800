// The layout that GNOME's input-source menu shows.
//
// GNOME keeps the sources in the order of their latest use, so the first one is in use. An input
// method types through a layout that only it knows; the layout used last stands in for it. Under
// another desktop the settings exist too, but mean nothing: whoever starts this source knows that
// the desktop is GNOME.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/linux/dconf/dconf_places.hpp"
#include "adapters/linux/descriptor_loop.hpp"
#include "adapters/linux/files/file_watch.hpp"
#include "adapters/linux/keyboard/keymap_compiler.hpp"
#include "adapters/linux/keyboard/layout_source.hpp"

namespace velotap {

/// The first layout among sources of a kind and a name, ("xkb", "de+nodeadkeys").
[[nodiscard]] std::optional<LayoutNames> layoutOfSources(
    const std::vector<std::pair<std::string, std::string>>& sources);

class GnomeLayoutSource final : public LayoutSource {
 public:
  GnomeLayoutSource(DescriptorLoop& loop, DconfPlaces places)
      : loop_(loop), places_(std::move(places)) {}
  void start(std::function<void()> changed) override;

 private:
  void read();

  DescriptorLoop& loop_;
  const DconfPlaces places_;
  std::optional<LayoutNames> compiled_;  ///< what `keys` are of; compiling costs, and other
                                         ///< settings of the same file change more often
  std::optional<FileWatch> watch_;
};

}  // namespace velotap
