#include "settings/gesture_explanation.hpp"

#include <algorithm>
#include <array>

#include "config/settings_keys.hpp"

namespace velotap {
namespace {

struct Row {
  std::string_view key;
  std::string_view title;
  std::string_view detail;
};

constexpr std::array kRows = {
    Row{keys::kMouseClick1Center, "Click with one finger in center", "gesture.explain.center"},
    Row{keys::kMouseClick2, "Click with two fingers", "gesture.explain.click"},
    Row{keys::kMouseClick3, "Click with three fingers", "gesture.explain.click"},
    Row{keys::kPadClick3, "Click with three fingers", "gesture.explain.click"},
    Row{keys::kPadTap4, "Tap with four fingers", "gesture.explain.tap"},
    Row{keys::kMousePinchZoom, "Pinch to zoom", "gesture.explain.pinch"},
    Row{keys::kMouseRotate, "Rotate with two fingers", "gesture.explain.rotate"},
    Row{keys::kMouseSwipe3Nav, "Three-finger swipe → Back/Forward", "gesture.explain.swipe"},
};
constexpr Row kOther = {{}, "Tap with three fingers", "gesture.explain.tap"};

const Row& rowOf(std::string_view key) {
  const auto* const found =
      std::find_if(kRows.begin(), kRows.end(), [key](const Row& row) { return row.key == key; });
  return found != kRows.end() ? *found : kOther;
}

}  // namespace

GestureExplanation::GestureExplanation(std::string_view key, const Texts& texts)
    : title(texts(rowOf(key).title)),
      detail(texts(rowOf(key).detail)),
      category(gestureCategory(key)) {}

GestureCategory gestureCategory(std::string_view key) noexcept {
  const bool clicks =
      key.find("Click") != std::string_view::npos || key.find("Tap") != std::string_view::npos;
  return clicks ? GestureCategory::middleClick : GestureCategory::more;
}

GestureDevice gestureDeviceOfKey(std::string_view key) noexcept {
  return key.substr(0, 3) == "pad" ? GestureDevice::trackpad : GestureDevice::mouse;
}

}  // namespace velotap
