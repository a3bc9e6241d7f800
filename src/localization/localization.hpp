// Which language the program speaks, and its texts in that language.
//
// The tables of all five languages are part of the program. The choice is made anew for every
// look-up that asks for it, so that a change of the preferred languages shows at the next redraw.
// Any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "localization/strings_file.hpp"

namespace velotap {

/// The texts of one language.
class LocalizationBundle {
 public:
  LocalizationBundle() = default;
  explicit LocalizationBundle(StringTable texts) : texts_(std::move(texts)) {}

  /// The key itself when the table has no text for it.
  [[nodiscard]] std::string localizedString(std::string_view key) const;
  [[nodiscard]] const StringTable& texts() const noexcept { return texts_; }

 private:
  StringTable texts_;
};

/// The source of one language's table.
struct LocalizationSource {
  std::string_view language;
  std::string_view strings;
};

class Localization {
 public:
  /// A language whose table is broken is left out, as one without a table is; `errors` says why,
  /// and names keys that a table has twice.
  explicit Localization(std::span<const LocalizationSource> sources);

  /// The tables of the program.
  [[nodiscard]] static const Localization& shared();

  /// "en", "bg", "de", "es", "fr": the languages that there are tables for, in this order.
  [[nodiscard]] const std::vector<std::string>& languages() const noexcept { return languages_; }
  /// Lines such as "de:12: a text without end".
  [[nodiscard]] const std::vector<std::string>& errors() const noexcept { return errors_; }

  /// The first of the preferred languages, which are tags such as "de-AT" or "bg", that there is a
  /// table for; "en" when there is none.
  [[nodiscard]] std::string language(std::span<const std::string> preferredLanguages) const;
  /// The texts of that language; a bundle that answers with the keys when there is no table at all.
  [[nodiscard]] const LocalizationBundle& bundle(
      std::span<const std::string> preferredLanguages) const;

 private:
  std::vector<std::string> languages_;
  std::vector<LocalizationBundle> bundles_;  // of the language with the same index
  std::vector<std::string> errors_;
  LocalizationBundle empty_;
};

}  // namespace velotap
