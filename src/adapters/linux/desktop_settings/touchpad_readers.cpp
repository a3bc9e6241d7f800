#include "adapters/linux/desktop_settings/touchpad_readers.hpp"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace velotap {
namespace {

TouchpadClickMethod gnomeClickMethod(std::string_view text) {
  if (text == "none") return TouchpadClickMethod::none;
  if (text == "areas") return TouchpadClickMethod::buttonAreas;
  if (text == "fingers") return TouchpadClickMethod::fingers;
  return TouchpadSettings{}.clickMethod;  // "default"
}

std::optional<bool> booleanOf(const KdeConfig::Entries& entries, std::string_view key) {
  const auto found = entries.find(key);
  return found == entries.end() ? std::nullopt : kdeBoolean(found->second);
}

TouchpadSettings kdeTouchpad(const KdeConfig::Entries& entries, TouchpadSettings touchpad) {
  touchpad.tapToClick = booleanOf(entries, "TapToClick").value_or(touchpad.tapToClick);
  touchpad.enabled = booleanOf(entries, "Enabled").value_or(touchpad.enabled);
  touchpad.disabledWithMouse = booleanOf(entries, "DisableEventsOnExternalMouse").value_or(false);
  const auto method = entries.find("ClickMethod");
  if (method == entries.end()) return touchpad;
  switch (kdeInteger(method->second).value_or(-1)) {
    case 0:
      touchpad.clickMethod = TouchpadClickMethod::none;
      break;
    case 1:
      touchpad.clickMethod = TouchpadClickMethod::buttonAreas;
      break;
    case 2:
      touchpad.clickMethod = TouchpadClickMethod::fingers;
      break;
    default:
      break;  // not written by KDE
  }
  return touchpad;
}

std::optional<std::uint32_t> deviceNumber(const std::string& text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

DesktopTouchpads gnomeTouchpads(const DconfSnapshot& settings, std::string_view schema) {
  TouchpadSettings touchpad;
  touchpad.tapToClick = settings.boolean(schema, "tap-to-click").value_or(touchpad.tapToClick);
  if (const auto method = settings.text(schema, "click-method")) {
    touchpad.clickMethod = gnomeClickMethod(*method);
  }
  const std::string sends = settings.text(schema, "send-events").value_or("enabled");
  touchpad.enabled = sends != "disabled";
  touchpad.disabledWithMouse = sends == "disabled-on-external-mouse";
  return {.others = touchpad, .devices = {}};
}

DesktopTouchpads kdeTouchpads(const KdeConfig& config, bool tapByDefault) {
  DesktopTouchpads touchpads;
  touchpads.others.tapToClick = tapByDefault;
  for (const auto& [group, entries] : config.groups()) {
    // [Libinput][vendor][product][name]
    if (group.size() != 4 || group[0] != "Libinput") continue;
    const auto vendor = deviceNumber(group[1]);
    const auto product = deviceNumber(group[2]);
    if (!vendor || !product) continue;
    touchpads.devices.push_back({.vendor = *vendor,
                                 .product = *product,
                                 .name = group[3],
                                 .settings = kdeTouchpad(entries, touchpads.others)});
  }
  return touchpads;
}

}  // namespace velotap
