// Any bytes as a table of texts, a pattern with arguments, and something to search for: what is
// read must be whole, a broken table must hold nothing, and every text is found in itself.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "localization/strings_file.hpp"
#include "localization/text_format.hpp"
#include "localization/text_search.hpp"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(data, data + size);
  const velotap::StringsFile file = velotap::parseStrings(text);
  if (file.error) {
    require(file.texts.empty() && file.error->line > 0 && !file.error->message.empty());
  }
  for (const auto& [key, pattern] : file.texts) {
    const auto filled = velotap::formatText(pattern, {key, std::int64_t{7}});
    if (velotap::formatSpecifiers(pattern).empty()) {
      require(velotap::formatSpecifiers(filled).empty() || filled.size() < pattern.size());
    }
  }
  const std::string_view trimmed = velotap::trimmedText(text);
  require(trimmed.size() <= text.size() && velotap::trimmedText(trimmed) == trimmed);
  require(velotap::containsText(text, trimmed));
  require(std::is_eq(velotap::compareText(text, text)));
  require(std::is_lt(velotap::compareText(text, trimmed)) ==
          std::is_gt(velotap::compareText(trimmed, text)));
  return 0;
}
