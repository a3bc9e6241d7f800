// Values of the settings store as property lists, and back.
//
// Types are kept: a boolean is no number, and a whole number is no real one. Property lists can
// hold what a Value cannot (dates and plain data); such an object has no value, and neither has a
// collection that holds one, so that writing a collection back never loses a part of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/macos/core_foundation/cf_ref.hpp"
#include "base/value.hpp"

namespace velotap {

/// Empty when `text` is not UTF-8.
[[nodiscard]] CfRef<CFStringRef> cfText(const CoreFoundationApi& cf, std::string_view text);
/// UTF-8; a lone half of a surrogate pair, which has no UTF-8, becomes a question mark.
[[nodiscard]] std::string textOf(const CoreFoundationApi& cf, CFStringRef text);

/// Empty when a text in it is not UTF-8 or it cannot be created.
[[nodiscard]] CfRef<CFTypeRef> cfValue(const CoreFoundationApi& cf, const Value& value);
/// `object` is not null.
[[nodiscard]] std::optional<Value> valueOf(const CoreFoundationApi& cf, CFTypeRef object);

/// The entries of a dictionary that have a text for a key and a value.
[[nodiscard]] ValueMap entriesOf(const CoreFoundationApi& cf, CFDictionaryRef dictionary);
/// Empty when one of the entries cannot be created.
[[nodiscard]] CfRef<CFDictionaryRef> cfDictionary(const CoreFoundationApi& cf,
                                                  const ValueMap& values);
[[nodiscard]] CfRef<CFArrayRef> cfTexts(const CoreFoundationApi& cf,
                                        const std::vector<std::string>& texts);

}  // namespace velotap
