// What the desktop does with touchpads by itself, and what follows from it.
//
// Desktops turn taps and clicks of three fingers into clicks of their own when told to. Whoever
// posts a middle click for the same fingers then clicks twice. These are the settings as plain
// values, and the decisions made from them; reading them is another file's work. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/value.hpp"

namespace velotap {

enum class TouchpadClickMethod { none, buttonAreas, fingers };

/// The defaults are those of the desktops' input library for a Magic Trackpad.
struct TouchpadSettings {
  bool enabled = true;
  bool disabledWithMouse = false;  ///< ignored while a mouse is there
  bool tapToClick = false;
  TouchpadClickMethod clickMethod = TouchpadClickMethod::fingers;
  friend bool operator==(const TouchpadSettings&, const TouchpadSettings&) = default;
};

/// A touchpad that the desktop has settings of its own for.
struct DeviceTouchpadSettings {
  std::uint32_t vendor = 0;
  std::uint32_t product = 0;
  std::string name;
  TouchpadSettings settings;
  friend bool operator==(const DeviceTouchpadSettings&, const DeviceTouchpadSettings&) = default;
};

struct DesktopTouchpads {
  TouchpadSettings others;  ///< of every touchpad that is not among `devices`
  std::vector<DeviceTouchpadSettings> devices;
  friend bool operator==(const DesktopTouchpads&, const DesktopTouchpads&) = default;

  [[nodiscard]] const TouchpadSettings& of(std::uint32_t vendor, std::uint32_t product) const;
  [[nodiscard]] const TouchpadSettings& named(std::string_view name) const;
};

/// Which gestures of three fingers the desktop turns into a click of its own. Whichever click: a
/// middle click beside a right one would open its menu and close it again.
struct ThreeFingerAnswers {
  bool tap = false;
  bool click = false;
  friend bool operator==(const ThreeFingerAnswers&, const ThreeFingerAnswers&) = default;
};
[[nodiscard]] ThreeFingerAnswers desktopAnswers(const TouchpadSettings& touchpad) noexcept;

/// For all trackpads together of which the program reads gestures. Where they differ, the desktop
/// counts as answering when it answers on one: a click too many does more harm than one too few.
[[nodiscard]] ThreeFingerAnswers desktopAnswersOnTrackpads(const DesktopTouchpads& touchpads);

/// What the desktop does with the trackpads, under the domains and keys by which the program knows
/// overlapping system gestures; nothing for any other domain or key. 1 is on, 0 off:
/// - a three-finger tap is a system gesture when the desktop turns it into a click, whichever;
/// - a three-finger drag is never one: no desktop read here offers it;
/// - nor is a two-finger swipe on a mouse: desktops see a Magic Mouse as a plain pointer, and
///   what its driver makes of two fingers is scrolling.
[[nodiscard]] std::optional<Value> systemGesturePreference(std::string_view domain,
                                                           std::string_view key,
                                                           ThreeFingerAnswers answers);

}  // namespace velotap
