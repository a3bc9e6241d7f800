// Serialised values from a database that somebody else wrote, or half wrote. The first byte says
// whether the byte order is the other one, the first line is the type, the rest the bytes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "gvariant_walk.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const bool swapped = !input.empty() && (input.front() & 1) != 0;
  if (!input.empty()) input.remove_prefix(1);
  const auto lineEnd = input.find('\n');
  const auto bytes = lineEnd == std::string_view::npos ? "" : input.substr(lineEnd + 1);
  std::size_t budget = 10'000;
  velotap::fuzz::walk(velotap::GVariant(input.substr(0, lineEnd), bytes, swapped), bytes, budget);
  return 0;
}
