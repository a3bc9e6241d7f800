#include "shell/uuid.hpp"

#include <cstdint>
#include <random>
#include <string_view>

namespace velotap {

std::string freshUuid() {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::random_device random;
  std::string text;
  for (int digit = 0; digit < 32; ++digit) {
    if (digit == 8 || digit == 12 || digit == 16 || digit == 20) text += '-';
    std::uint32_t value = random() & 15U;
    if (digit == 12) value = 4;                  // the version: random
    if (digit == 16) value = 8U | (value & 3U);  // the variant
    text += kDigits[value];
  }
  return text;
}

}  // namespace velotap
