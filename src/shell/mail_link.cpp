#include "shell/mail_link.hpp"

namespace velotap {
namespace {

// As every program understands them, whatever the locale.
bool isUnreserved(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::string_view supportAddress() {
  return VELOTAP_SUPPORT_ADDRESS;
}

std::string percentEncoded(std::string_view text) {
  static constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (isUnreserved(c)) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded += '%';
    encoded += kHexDigits[byte >> 4U];
    encoded += kHexDigits[byte & 15U];
  }
  return encoded;
}

std::string mailLink(std::string_view address, std::string_view subject, std::string_view body) {
  std::string link = "mailto:" + std::string(address) + "?subject=" + percentEncoded(subject);
  if (!body.empty()) link += "&body=" + percentEncoded(body);
  return link;
}

}  // namespace velotap
