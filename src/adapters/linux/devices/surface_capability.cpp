#include "adapters/linux/devices/surface_capability.hpp"

#include <linux/input-event-codes.h>

#include <charconv>
#include <cstdint>

namespace velotap {
namespace {

// The kernel prints its bitmaps in words as wide as the reading program's own.
constexpr unsigned kBitsPerWord = 8 * sizeof(long);

// Removes and returns the last word of the text.
std::string_view takeLastWord(std::string_view& text) {
  while (!text.empty() && (text.back() == ' ' || text.back() == '\n')) text.remove_suffix(1);
  const std::size_t space = text.rfind(' ');
  const std::size_t start = space == std::string_view::npos ? 0 : space + 1;
  const std::string_view word = text.substr(start);
  text = text.substr(0, start);
  return word;
}

}  // namespace

bool bitmapHas(std::string_view bitmap, unsigned bit) noexcept {
  std::string_view word = takeLastWord(bitmap);
  for (unsigned skip = bit / kBitsPerWord; skip > 0; --skip) word = takeLastWord(bitmap);
  std::uint64_t bits = 0;
  const auto parsed = std::from_chars(word.data(), word.data() + word.size(), bits, 16);
  if (parsed.ec != std::errc() || parsed.ptr != word.data() + word.size()) return false;
  return (bits >> (bit % kBitsPerWord) & 1U) != 0;
}

bool isMultitouchSurface(const SurfaceDescription& device) noexcept {
  return bitmapHas(device.absoluteAxes, ABS_MT_POSITION_X) &&
         bitmapHas(device.absoluteAxes, ABS_MT_POSITION_Y) &&
         !bitmapHas(device.properties, INPUT_PROP_DIRECT) &&
         !device.phys.starts_with(kOwnPhysPrefix);
}

}  // namespace velotap
