#include "adapters/linux/keyboard/keymap_compiler.hpp"

namespace velotap {

XkbContext makeQuietContext() {
  XkbContext context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  if (context) {
    xkb_context_set_log_fn(context.get(), [](xkb_context*, xkb_log_level, const char*, va_list) {});
  }
  return context;
}

LayoutGroups groupsOf(xkb_keymap* keymap) {
  LayoutGroups groups;
  if (keymap == nullptr) return groups;
  const xkb_layout_index_t count = xkb_keymap_num_layouts(keymap);
  for (xkb_layout_index_t group = 0; group < count; ++group) groups.emplace_back(keymap, group);
  return groups;
}

LayoutGroups compileNames(const LayoutNames& names) {
  const XkbContext context = makeQuietContext();
  if (!context) return {};
  const xkb_rule_names rules = {.rules = "evdev",
                                .model = names.model.c_str(),
                                .layout = names.layout.c_str(),
                                .variant = names.variant.c_str(),
                                .options = names.options.c_str()};
  const XkbKeymap keymap(
      xkb_keymap_new_from_names(context.get(), &rules, XKB_KEYMAP_COMPILE_NO_FLAGS));
  return groupsOf(keymap.get());
}

LayoutGroups compileText(std::string_view text) {
  const XkbContext context = makeQuietContext();
  if (!context) return {};
  const XkbKeymap keymap(xkb_keymap_new_from_buffer(context.get(), text.data(), text.size(),
                                                    XKB_KEYMAP_FORMAT_TEXT_V1,
                                                    XKB_KEYMAP_COMPILE_NO_FLAGS));
  return groupsOf(keymap.get());
}

std::optional<LayoutKeys> groupAt(const LayoutGroups& groups, std::size_t index) {
  if (groups.empty()) return std::nullopt;
  return groups[index % groups.size()];
}

}  // namespace velotap
