// Texts between C++ and Foundation. Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace velotap {

/// Nil when `text` is not UTF-8.
[[nodiscard]] inline NSString* foundationText(std::string_view text) {
  return
      [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

/// Nothing for nil, and for the lone halves of surrogate pairs that have no UTF-8.
[[nodiscard]] inline std::optional<std::string> textOf(NSString* text) {
  const char* utf8 = text.UTF8String;
  if (utf8 == nullptr) return std::nullopt;
  return std::string(utf8);
}

}  // namespace velotap
