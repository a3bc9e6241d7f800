#include "localization/localization.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace velotap {

namespace embedded {
// Made from the tables of the resources folder when the program is built.
extern const std::string_view kTable_en;
extern const std::string_view kTable_bg;
extern const std::string_view kTable_de;
extern const std::string_view kTable_es;
extern const std::string_view kTable_fr;
}  // namespace embedded

namespace {

constexpr std::string_view kFallbackLanguage = "en";

// "de" of "de-AT", "de_AT.UTF-8" and "DE".
std::string primaryLanguage(std::string_view tag) {
  std::string primary(tag.substr(0, tag.find_first_of("-_.@")));
  for (char& c : primary) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return primary;
}

}  // namespace

std::string LocalizationBundle::localizedString(std::string_view key) const {
  const auto found = texts_.find(key);
  return found != texts_.end() ? found->second : std::string(key);
}

Localization::Localization(std::span<const LocalizationSource> sources) {
  for (const LocalizationSource& source : sources) {
    StringsFile file = parseStrings(source.strings);
    const auto note = [&](const StringsError& error) {
      errors_.push_back(std::string(source.language) + ":" + std::to_string(error.line) + ": " +
                        error.message);
    };
    std::for_each(file.repeated.begin(), file.repeated.end(), note);
    if (file.error) {
      note(*file.error);
      continue;
    }
    languages_.emplace_back(source.language);
    bundles_.emplace_back(std::move(file.texts));
  }
}

const Localization& Localization::shared() {
  static const Localization instance(std::array{
      LocalizationSource{.language = "en", .strings = embedded::kTable_en},
      LocalizationSource{.language = "bg", .strings = embedded::kTable_bg},
      LocalizationSource{.language = "de", .strings = embedded::kTable_de},
      LocalizationSource{.language = "es", .strings = embedded::kTable_es},
      LocalizationSource{.language = "fr", .strings = embedded::kTable_fr},
  });
  return instance;
}

std::string Localization::language(std::span<const std::string> preferredLanguages) const {
  for (const std::string& tag : preferredLanguages) {
    std::string primary = primaryLanguage(tag);
    if (std::find(languages_.begin(), languages_.end(), primary) != languages_.end()) {
      return primary;
    }
  }
  return std::string(kFallbackLanguage);
}

const LocalizationBundle& Localization::bundle(
    std::span<const std::string> preferredLanguages) const {
  const auto found = std::find(languages_.begin(), languages_.end(), language(preferredLanguages));
  if (found == languages_.end()) return empty_;
  return bundles_[static_cast<std::size_t>(found - languages_.begin())];
}

}  // namespace velotap
