#include "app/shell_surroundings.hpp"

namespace velotap {

std::string filledFormat(std::string format, std::string_view argument) {
  static constexpr std::string_view kPlace = "%@";
  if (const auto at = format.find(kPlace); at != std::string::npos) {
    format.replace(at, kPlace.size(), argument);
  }
  return format;
}

}  // namespace velotap
