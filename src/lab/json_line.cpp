#include "lab/json_line.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace velotap::lab {
namespace {

template <typename Number>
std::string shortest(Number number) {
  std::array<char, 32> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), end.ptr};
}

constexpr std::string_view kHexDigits = "0123456789abcdef";

}  // namespace

JsonLine& JsonLine::text(std::string_view key, std::string_view value) {
  begin(key);
  quote(value);
  return *this;
}

JsonLine& JsonLine::integer(std::string_view key, std::int64_t value) {
  return raw(key, shortest(value));
}

JsonLine& JsonLine::real(std::string_view key, double value) {
  return raw(key, std::isfinite(value) ? shortest(value) : "null");
}

JsonLine& JsonLine::raw(std::string_view key, std::string_view value) {
  begin(key);
  members_ += value;
  return *this;
}

void JsonLine::begin(std::string_view key) {
  if (members_.size() > 1) members_ += ',';
  quote(key);
  members_ += ':';
}

void JsonLine::quote(std::string_view text) {
  members_ += '"';
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      members_ += '\\';
      members_ += c;
    } else if (code < 0x20) {
      members_ += "\\u00";
      members_ += kHexDigits[code >> 4];
      members_ += kHexDigits[code & 0xF];
    } else {
      members_ += c;
    }
  }
  members_ += '"';
}

}  // namespace velotap::lab
