#include "adapters/linux/clicks/button_router.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <utility>

namespace velotap {

bool isClickButton(std::uint16_t code) noexcept {
  return code == BTN_LEFT || code == BTN_RIGHT || code == BTN_MIDDLE;
}

std::uint16_t ButtonRouter::meaning(std::uint16_t code) const noexcept {
  return middleIsPhantom_ && code == BTN_MIDDLE ? BTN_LEFT : code;
}

Emission ButtonRouter::press(std::uint16_t code, PressAnswer answer) {
  if (isDown(code)) return {};
  Emission press{.outlet = Emission::Outlet::none, .code = meaning(code), .down = true};
  switch (answer) {
    case PressAnswer::unchanged:
      press.outlet = Emission::Outlet::mirror;
      break;
    case PressAnswer::middle:
      press = {.outlet = Emission::Outlet::pointer, .code = BTN_MIDDLE, .down = true};
      break;
    case PressAnswer::dropped:
      break;
  }
  const bool heldAlready = holds(press);
  held_.push_back({.code = code, .press = press});
  return heldAlready || press.outlet == Emission::Outlet::none ? Emission() : press;
}

Emission ButtonRouter::release(std::uint16_t code) {
  const auto held =
      std::find_if(held_.begin(), held_.end(), [code](const Held& h) { return h.code == code; });
  if (held == held_.end()) return {};
  Emission release = held->press;
  held_.erase(held);
  // Two buttons of the device may press the same one of the desktop: the last to go releases it.
  if (release.outlet == Emission::Outlet::none || holds(release)) return {};
  release.down = false;
  return release;
}

std::vector<Emission> ButtonRouter::releaseAll() {
  std::vector<Emission> releases;
  while (!held_.empty()) {
    const Emission released = release(held_.front().code);
    if (released.outlet != Emission::Outlet::none) releases.push_back(released);
  }
  return releases;
}

bool ButtonRouter::isDown(std::uint16_t code) const noexcept {
  return std::any_of(held_.begin(), held_.end(), [code](const Held& h) { return h.code == code; });
}

bool ButtonRouter::holds(const Emission& press) const noexcept {
  return press.outlet != Emission::Outlet::none &&
         std::any_of(held_.begin(), held_.end(),
                     [&press](const Held& h) { return h.press == press; });
}

}  // namespace velotap
