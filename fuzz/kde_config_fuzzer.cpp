// Configuration files of KDE, laid over one another. A zero byte ends one file and begins the next.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "adapters/linux/desktop_settings/kde_config.hpp"
#include "adapters/linux/desktop_settings/touchpad_readers.hpp"

namespace {

using velotap::KdeConfig;

void require(bool holds) {
  if (!holds) std::abort();
}

void addAll(KdeConfig& config, std::string_view files) {
  while (true) {
    const auto end = files.find('\0');
    config.add(files.substr(0, end));
    if (end == std::string_view::npos) return;
    files.remove_prefix(end + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  KdeConfig config;
  addAll(config, input);
  std::size_t length = 0;
  for (const auto& [group, entries] : config.groups()) {
    require(!entries.empty());
    for (const auto& [key, value] : entries) {
      require(!key.empty() && key.find_first_of("[=\n") == std::string::npos);
      require(key.front() != ' ' && key.back() != ' ');
      length += key.size() + value.size();
      if (const auto number = velotap::kdeInteger(value)) {
        require(velotap::kdeInteger(std::to_string(*number)) == number);
      }
    }
  }
  require(length <= size);  // escapes only ever get shorter
  const auto touchpads = velotap::kdeTouchpads(config, false);
  require(touchpads.devices.size() <= config.groups().size());

  // Reading the last file once more changes nothing: it is on top already.
  const auto before = config.groups();
  const auto last = input.rfind('\0');
  config.add(last == std::string_view::npos ? input : input.substr(last + 1));
  require(config.groups() == before);
  return 0;
}
