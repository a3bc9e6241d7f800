// Any text as a settings file; whatever is read must be written and read back as it was.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "adapters/json/json_value.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string error;
  const auto values =
      velotap::parseSettings(std::string_view(reinterpret_cast<const char*>(data), size), error);
  if (!values) {
    if (error.empty()) std::abort();
    return 0;
  }
  const auto text = velotap::settingsText(*values, error);
  if (text && velotap::parseSettings(*text, error) != values) std::abort();
  return 0;
}
