// What a model needs to speak: the texts of one language and the notation of one region.
//
// A value made from SystemRegionalSettings, or in a test from any bundle. Cheap to copy; the bundle
// must outlive it. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "localization/localization.hpp"
#include "localization/regional_format.hpp"
#include "localization/text_format.hpp"

namespace velotap {

class Texts {
 public:
  Texts(const LocalizationBundle& bundle, RegionalFormat format)
      : bundle_(&bundle), format_(std::move(format)) {}

  /// The text of a key, which is a dotted name or the English text itself.
  [[nodiscard]] std::string operator()(std::string_view key) const;
  [[nodiscard]] std::string operator()(std::string_view key,
                                       const FormatArguments& arguments) const;
  /// The text of "key.one" or "key.other", whichever goes with the count, with the count, in the
  /// region's notation, as its only argument.
  [[nodiscard]] std::string counted(std::string_view key, std::int64_t count) const;

  [[nodiscard]] const RegionalFormat& format() const noexcept { return format_; }
  /// How long ago a moment was, in words: "now", "5 minutes ago", "yesterday", "3 weeks ago".
  [[nodiscard]] std::string relative(std::int64_t moment, std::int64_t now) const;

 private:
  const LocalizationBundle* bundle_;
  RegionalFormat format_;
};

}  // namespace velotap
