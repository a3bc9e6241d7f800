// Turns the names of a layout, or a keymap's text, into what its keys type.
//
// Main thread. The library's context and keymaps live only while a layout is compiled: together
// they weigh several times what the table does that is kept.
#pragma once

#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

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

/// Nothing when there is no such layout.
[[nodiscard]] std::optional<LayoutKeys> compileNames(const LayoutNames& names,
                                                     xkb_layout_index_t group);

/// `text` is a keymap in text form, as a Wayland compositor hands it out. Nothing when it is none.
[[nodiscard]] std::optional<LayoutKeys> compileText(std::string_view text,
                                                    xkb_layout_index_t group);

}  // namespace velotap
