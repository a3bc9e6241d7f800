#include "adapters/linux/desktop_settings/touchpad_settings.hpp"

#include <algorithm>
#include <array>

namespace velotap {
namespace {

constexpr std::array<std::string_view, 2> kTrackpadDomains = {
    "com.apple.AppleMultitouchTrackpad", "com.apple.driver.AppleBluetoothMultitouch.trackpad"};
constexpr std::array<std::string_view, 2> kMouseDomains = {
    "com.apple.AppleMultitouchMouse", "com.apple.driver.AppleBluetoothMultitouch.mouse"};

// Magic Trackpads: the maker's numbers on USB and on Bluetooth, and the three models.
constexpr std::array<std::uint32_t, 2> kTrackpadVendors = {0x05ac, 0x004c};
constexpr std::array<std::uint32_t, 3> kTrackpadProducts = {0x030e, 0x0265, 0x0324};

bool isGestureTrackpad(const DeviceTouchpadSettings& device) {
  return std::ranges::find(kTrackpadVendors, device.vendor) != kTrackpadVendors.end() &&
         std::ranges::find(kTrackpadProducts, device.product) != kTrackpadProducts.end();
}

}  // namespace

const TouchpadSettings& DesktopTouchpads::of(std::uint32_t vendor, std::uint32_t product) const {
  const auto found = std::ranges::find_if(devices, [&](const DeviceTouchpadSettings& device) {
    return device.vendor == vendor && device.product == product;
  });
  return found == devices.end() ? others : found->settings;
}

const TouchpadSettings& DesktopTouchpads::named(std::string_view name) const {
  const auto found = std::ranges::find(devices, name, &DeviceTouchpadSettings::name);
  return found == devices.end() ? others : found->settings;
}

ThreeFingerAnswers desktopAnswers(const TouchpadSettings& touchpad) noexcept {
  return {.tap = touchpad.enabled && touchpad.tapToClick,
          .click = touchpad.enabled && touchpad.clickMethod == TouchpadClickMethod::fingers};
}

ThreeFingerAnswers desktopAnswersOnTrackpads(const DesktopTouchpads& touchpads) {
  bool known = false;
  ThreeFingerAnswers all;
  for (const auto& device : touchpads.devices) {
    if (!isGestureTrackpad(device)) continue;
    known = true;
    const ThreeFingerAnswers one = desktopAnswers(device.settings);
    all.tap = all.tap || one.tap;
    all.click = all.click || one.click;
  }
  return known ? all : desktopAnswers(touchpads.others);
}

std::optional<Value> systemGesturePreference(std::string_view domain, std::string_view key,
                                             ThreeFingerAnswers answers) {
  const auto among = [&](const auto& domains) {
    return std::ranges::find(domains, domain) != domains.end();
  };
  if (among(kTrackpadDomains)) {
    if (key == "TrackpadThreeFingerTapGesture") return Value(answers.tap ? 1 : 0);
    if (key == "TrackpadThreeFingerDrag") return Value(0);
  }
  if (among(kMouseDomains) && key == "MouseTwoFingerHorizSwipeGesture") return Value(0);
  return std::nullopt;
}

}  // namespace velotap
