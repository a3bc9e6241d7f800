#include "config/trackpad_mode.hpp"

namespace velotap {

TrackpadMode trackpadMode(std::string_view text) noexcept {
  if (text == "native") return TrackpadMode::native;
  if (text == "post") return TrackpadMode::post;
  return TrackpadMode::automatic;
}

bool programAnswers(TrackpadMode mode, bool desktopClicks) noexcept {
  switch (mode) {
    case TrackpadMode::native:
      return false;
    case TrackpadMode::post:
      return true;
    case TrackpadMode::automatic:
      break;
  }
  return !desktopClicks;
}

}  // namespace velotap
