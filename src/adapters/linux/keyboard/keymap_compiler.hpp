// Turns the names of a layout, or a keymap's text, into what its keys type.
//
// Main thread. The library's context and keymaps live only while a layout is compiled: together
// they weigh several times what the table does that is kept.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/linux/keyboard/layout_keys.hpp"

namespace velotap {

struct XkbRelease {
  void operator()(xkb_context* context) const noexcept { xkb_context_unref(context); }
  void operator()(xkb_keymap* keymap) const noexcept { xkb_keymap_unref(keymap); }
};
using XkbContext = std::unique_ptr<xkb_context, XkbRelease>;
using XkbKeymap = std::unique_ptr<xkb_keymap, XkbRelease>;

/// A context that complains about nothing: keymaps come from others, and one that cannot be used
/// is an answer, not an error. Null when there is no memory for it.
[[nodiscard]] XkbContext makeQuietContext();

/// Names as the X server's configuration knows them; layouts and variants may be lists separated
/// by commas. An empty text means the system's default.
struct LayoutNames {
  std::string model;
  std::string layout;
  std::string variant;
  std::string options;
  friend bool operator==(const LayoutNames&, const LayoutNames&) = default;
};

/// What the keys type in each group of a keymap; empty when there is no keymap. Groups are the
/// layouts between which the user switches.
using LayoutGroups = std::vector<LayoutKeys>;
[[nodiscard]] LayoutGroups groupsOf(xkb_keymap* keymap);
/// Empty when there is no such layout.
[[nodiscard]] LayoutGroups compileNames(const LayoutNames& names);
/// `text` is a keymap in text form, as a Wayland compositor hands it out.
[[nodiscard]] LayoutGroups compileText(std::string_view text);

/// A group beyond the last wraps around, as it does for typing; nothing without groups.
[[nodiscard]] std::optional<LayoutKeys> groupAt(const LayoutGroups& groups, std::size_t index);

}  // namespace velotap
