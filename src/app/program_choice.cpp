#include "app/program_choice.hpp"

#include <algorithm>

namespace velotap {
namespace {

constexpr std::string_view kPictures = "--listlane-capture";
constexpr std::string_view kBackground = "--background";

bool has(const std::vector<std::string_view>& arguments, std::string_view flag) {
  return std::find(arguments.begin(), arguments.end(), flag) != arguments.end();
}

}  // namespace

ProgramChoice programChoice(const std::vector<std::string_view>& arguments,
                            const std::function<const char*(const char*)>& environment) {
  if (has(arguments, kPictures)) return ProgramChoice::desktop;
  if (has(arguments, kBackground)) return ProgramChoice::background;
  for (const char* display : {"WAYLAND_DISPLAY", "DISPLAY"}) {
    const char* value = environment(display);
    if (value != nullptr && *value != '\0') return ProgramChoice::desktop;
  }
  return ProgramChoice::background;
}

std::string desktopProgramBeside(std::string_view program) {
  const std::size_t slash = program.rfind('/');
  const std::string_view folder =
      slash == std::string_view::npos ? std::string_view() : program.substr(0, slash + 1);
  return std::string(folder) + "velotap-desktop";
}

}  // namespace velotap
