#include "adapters/linux/keyboard/keymap_compiler.hpp"

namespace velotap {

XkbContext makeQuietContext() {
  XkbContext context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  if (context) {
    xkb_context_set_log_fn(context.get(), [](xkb_context*, xkb_log_level, const char*, va_list) {});
  }
  return context;
}

std::optional<LayoutKeys> compileNames(const LayoutNames& names, xkb_layout_index_t group) {
  const XkbContext context = makeQuietContext();
  if (!context) return std::nullopt;
  const xkb_rule_names rules = {.rules = "evdev",
                                .model = names.model.c_str(),
                                .layout = names.layout.c_str(),
                                .variant = names.variant.c_str(),
                                .options = names.options.c_str()};
  const XkbKeymap keymap(
      xkb_keymap_new_from_names(context.get(), &rules, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return std::nullopt;
  return LayoutKeys(keymap.get(), group);
}

std::optional<LayoutKeys> compileText(std::string_view text, xkb_layout_index_t group) {
  const XkbContext context = makeQuietContext();
  if (!context) return std::nullopt;
  const XkbKeymap keymap(xkb_keymap_new_from_buffer(context.get(), text.data(), text.size(),
                                                    XKB_KEYMAP_FORMAT_TEXT_V1,
                                                    XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!keymap) return std::nullopt;
  return LayoutKeys(keymap.get(), group);
}

}  // namespace velotap
