// Databases of settings and compiled schemas, whole and broken. The first line of the input is a
// key, the rest the file.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "adapters/linux/dconf/gvdb.hpp"
#include "gvariant_walk.hpp"

namespace {

using velotap::GvdbTable;
using velotap::fuzz::require;

constexpr std::array<std::string_view, 5> kKeys = {
    "/org/gnome/desktop/peripherals/touchpad/tap-to-click",
    "/org/gnome/desktop/peripherals/touchpad/click-method",
    "org.gnome.desktop.peripherals.touchpad", "tap-to-click", ".locks"};

void ask(const GvdbTable& table, std::string_view key, std::string_view file, int depth) {
  const auto value = table.value(key);
  const auto inside = table.table(key);
  require(!(value && inside));
  require(table.contains(key) || (!value && !inside));
  std::size_t budget = 1'000;
  if (value) velotap::fuzz::walk(*value, file, budget);
  // A table may claim to hold itself.
  if (!inside || depth == 4) return;
  for (const std::string_view inner : kKeys) ask(*inside, inner, file, depth + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto lineEnd = input.find('\n');
  if (lineEnd == std::string_view::npos) return 0;
  const std::string_view file = input.substr(lineEnd + 1);
  const auto root = GvdbTable::open(file);
  if (!root) return 0;
  ask(*root, input.substr(0, lineEnd), file, 0);
  for (const std::string_view key : kKeys) ask(*root, key, file, 0);
  return 0;
}
