// Who answers three fingers on a trackpad: the desktop or the program.
//
// Desktops can be told to turn taps and clicks of three fingers into clicks of their own. Whoever
// posts a middle click for the same fingers then clicks twice. Pure; any thread. Four fingers mean
// nothing to any desktop, so they are always the program's.
#pragma once

#include <cstdint>
#include <string_view>

namespace velotap {

enum class TrackpadMode : std::uint8_t {
  automatic,  ///< whoever does it already: the desktop where it clicks by itself, else the program
  native,     ///< the desktop; the program stays out
  post,       ///< the program, whatever the desktop does
};

/// Any text but "native" and "post" is `automatic`.
[[nodiscard]] TrackpadMode trackpadMode(std::string_view text) noexcept;

[[nodiscard]] bool programAnswers(TrackpadMode mode, bool desktopClicks) noexcept;

}  // namespace velotap
