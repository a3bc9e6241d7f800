// Any text as a scenario.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lab/scenario_parser.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto result =
      velotap::lab::parseScenario(std::string_view(reinterpret_cast<const char*>(data), size));
  static_cast<void>(result);
  return 0;
}
