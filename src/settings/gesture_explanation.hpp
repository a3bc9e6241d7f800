// What each gesture is called, what it does in a sentence, and where it stands in the list.
//
// Pure; any thread.
#pragma once

#include <string>
#include <string_view>

#include "input/gesture_device.hpp"
#include "localization/texts.hpp"

namespace velotap {

enum class GestureCategory { middleClick, more };

struct GestureExplanation {
  /// Any key that the table does not name is explained as a tap with three fingers.
  GestureExplanation(std::string_view key, const Texts& texts);

  std::string title;
  std::string detail;
  GestureCategory category = GestureCategory::middleClick;
};

/// Keys that contain "Click" or "Tap" make a middle click.
[[nodiscard]] GestureCategory gestureCategory(std::string_view key) noexcept;
/// Keys that begin with "pad" are the trackpad's, all others the mouse's.
[[nodiscard]] GestureDevice gestureDeviceOfKey(std::string_view key) noexcept;

}  // namespace velotap
