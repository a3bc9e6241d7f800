// Desktop entries come from whoever packaged a program, or from nobody who would admit it. The
// first line of the input is a locale's name, the rest the file.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "adapters/linux/workspace/application_index.hpp"
#include "adapters/linux/workspace/desktop_entry.hpp"
#include "adapters/linux/workspace/x11_properties.hpp"
#include "base/utf8.hpp"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void readEntry(std::string_view locale, std::string_view text) {
  const auto languages = velotap::languageSuffixes(locale);
  require(languages.size() <= 4);
  const auto entry = velotap::parseDesktopEntry(text, languages);
  if (!entry) return;
  require(entry->hidden || !entry->name.empty());
  require(velotap::isUtf8(entry->name) && velotap::isUtf8(entry->icon));
  require(entry->program.find('/') == std::string::npos);
  // An application is found by whatever it claims to be.
  const velotap::ApplicationIndex index({{.id = velotap::desktopFileId(text.substr(0, 32)),
                                          .name = entry->name,
                                          .icon = entry->icon,
                                          .windowClass = entry->windowClass,
                                          .program = entry->program,
                                          .inMenus = entry->inMenus}});
  if (entry->windowClass.empty()) return;
  require(index.find({.windowClass = entry->windowClass}) == &index.all().front());
}

void readProperty(std::string_view bytes) {
  for (const int format : {0, 8, 16, 32}) {
    const velotap::PropertyValue value{.answered = true, .format = format, .bytes = bytes};
    const auto [instance, windowClass] = velotap::instanceAndClass(value);
    require(instance.size() + windowClass.size() <= bytes.size());
    require(velotap::firstNumber(value).has_value() == (format == 32 && bytes.size() >= 4));
    if (const auto first = velotap::firstNumber(value)) {
      require(velotap::containsNumber(value, *first));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto lineEnd = input.find('\n');
  const auto rest = lineEnd == std::string_view::npos ? "" : input.substr(lineEnd + 1);
  readEntry(input.substr(0, lineEnd), rest);
  readProperty(input);
  return 0;
}
