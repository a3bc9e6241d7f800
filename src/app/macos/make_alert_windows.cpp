// Chosen by the build where there is no Qt.
#include <iostream>
#include <utility>

#include "app/command_line.hpp"
#include "app/macos/alert_windows.hpp"

namespace velotap {

std::unique_ptr<Windows> makeWindows(int&, char**, WindowSurroundings surroundings) {
  return std::make_unique<AlertWindows>(std::move(surroundings.activate));
}

std::optional<int> capturePicturesIfRequested(int argc, char** argv) {
  if (!parseCommandLine(argc, argv).capture) return std::nullopt;
  std::cerr << "Velotap was built without its settings window.\n";
  return 1;
}

}  // namespace velotap
