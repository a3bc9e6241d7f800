// Writes one flat JSON object on one line, keys in the order in which they are added.
//
// A plain value; any thread. Texts are taken as UTF-8.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace velotap::lab {

class JsonLine {
 public:
  JsonLine& text(std::string_view key, std::string_view value);
  JsonLine& integer(std::string_view key, std::int64_t value);
  /// The shortest form that reads back as the same number. JSON has no infinities and no
  /// not-a-number; they are null.
  JsonLine& real(std::string_view key, double value);
  JsonLine& boolean(std::string_view key, std::same_as<bool> auto value) {
    return raw(key, value ? "true" : "false");
  }
  /// `value` is JSON already.
  JsonLine& raw(std::string_view key, std::string_view value);

  /// The finished object, without a line end.
  [[nodiscard]] std::string str() const { return members_ + "}"; }

 private:
  void quote(std::string_view text);
  void begin(std::string_view key);

  std::string members_ = "{";
};

}  // namespace velotap::lab
