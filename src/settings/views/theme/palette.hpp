// Every colour of the windows, by what it is for.
//
// Pure values. Light, dark and high contrast are three answers to the same questions, so a view
// never knows which one is shown. Text keeps a contrast of 4.5 : 1 to whatever it can stand on,
// marks and outlines that carry meaning 3 : 1; with high contrast 7 : 1 and 4.5 : 1.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace velotap {

enum class ColorScheme { light, dark };

/// 0xAARRGGBB.
using Argb = std::uint32_t;

struct Palette {
  struct Entry {
    std::string_view name;
    Argb color = 0;
  };
  static constexpr std::size_t kSize = 28;
  std::array<Entry, kSize> entries;

  /// Black for a name that does not exist, which the tests make impossible.
  [[nodiscard]] Argb operator[](std::string_view name) const;
};

[[nodiscard]] Palette paletteFor(ColorScheme scheme, bool highContrast);

/// What is seen where `over` lies on the opaque `under`.
[[nodiscard]] Argb blended(Argb over, Argb under);

/// The ratio that accessibility guidelines speak of, 1 to 21, of two opaque colours.
[[nodiscard]] double contrast(Argb a, Argb b);

}  // namespace velotap
