// What stands in the way of taking a device over, and how that is put to a person.
//
// Pure.
#pragma once

#include <cstdint>
#include <string>

namespace velotap {

/// Where the trouble is.
enum class GrabTrouble : std::uint8_t {
  none,
  device,  ///< it cannot be opened or grabbed; another program may hold it
  mirror,  ///< its mirror image cannot be made, or is lost again and again
  guard,   ///< nobody can be had to give it back, or whoever does ends again and again
};

/// Why a device is left alone; `error` is the system's number, EIO for what went on happening.
[[nodiscard]] std::string refusalText(GrabTrouble trouble, int error, const std::string& device);

/// Why a device was given back just now, to be taken over anew.
[[nodiscard]] std::string lossText(GrabTrouble trouble, const std::string& device);

}  // namespace velotap
