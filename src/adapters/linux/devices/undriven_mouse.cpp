#include "adapters/linux/devices/undriven_mouse.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "adapters/linux/devices/surface_capability.hpp"

namespace velotap {
namespace {

// Described for people in docs/devices.md.
constexpr std::array<std::string_view, 2> kVendors = {"05ac", "004c"};
constexpr std::array<std::string_view, 3> kMice = {"030d", "0269", "0323"};

std::string lineOf(const std::filesystem::path& file) {
  std::ifstream input(file);
  std::string line;
  std::getline(input, line);
  return line;
}

struct Model {
  bool moves = false;
  bool touches = false;
};

}  // namespace

bool hasUndrivenMouse(const std::string& folder) {
  std::array<Model, kMice.size()> models{};
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (!entry.path().filename().string().starts_with("event")) continue;
    const std::filesystem::path device = entry.path() / "device";
    const auto* const vendor =
        std::find(kVendors.begin(), kVendors.end(), lineOf(device / "id" / "vendor"));
    const auto* const mouse =
        std::find(kMice.begin(), kMice.end(), lineOf(device / "id" / "product"));
    if (vendor == kVendors.end() || mouse == kMice.end()) continue;
    // The program's own stand-in for a mouse has its numbers and no touches.
    if (lineOf(device / "phys").starts_with(kOwnPhysPrefix)) continue;
    Model& model = models.at(static_cast<std::size_t>(mouse - kMice.begin()));
    const std::filesystem::path capabilities = device / "capabilities";
    model.moves |= bitmapHas(lineOf(capabilities / "rel"), REL_X);
    model.touches |= bitmapHas(lineOf(capabilities / "abs"), ABS_MT_POSITION_X);
  }
  return std::any_of(models.begin(), models.end(),
                     [](const Model& model) { return model.moves && !model.touches; });
}

}  // namespace velotap
