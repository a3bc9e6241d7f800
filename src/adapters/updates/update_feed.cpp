#include "adapters/updates/update_feed.hpp"

#include <sodium.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <vector>

namespace velotap {
namespace {

constexpr std::string_view kFirstLine = "velotap-updates 1\n";
constexpr std::string_view kSignature = "signature ";

template <std::size_t Size>
std::optional<std::array<unsigned char, Size>> decoded(std::string_view text) {
  std::array<unsigned char, Size> bytes{};
  std::size_t length = 0;
  const char* end = nullptr;
  const bool whole =
      sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &length,
                        &end, sodium_base64_VARIANT_ORIGINAL) == 0 &&
      end == text.data() + text.size() && length == Size;
  return whole ? std::optional(bytes) : std::nullopt;
}

const unsigned char* bytesOf(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

bool isSigned(std::string_view text, std::string_view signature, std::string_view key) {
  const auto signatureBytes = decoded<crypto_sign_BYTES>(signature);
  const auto keyBytes = decoded<crypto_sign_PUBLICKEYBYTES>(key);
  return sodium_init() >= 0 && signatureBytes && keyBytes &&
         crypto_sign_verify_detached(signatureBytes->data(), bytesOf(text), text.size(),
                                     keyBytes->data()) == 0;
}

// The value of the next line, which must have this name.
std::optional<std::string> takeLine(std::string_view& text, std::string_view name) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos || !text.starts_with(name)) return std::nullopt;
  const std::string_view value = text.substr(name.size(), end - name.size());
  text.remove_prefix(end + 1);
  return std::string(value);
}

std::optional<std::vector<std::uint32_t>> numbersOf(std::string_view version) {
  std::vector<std::uint32_t> numbers;
  while (true) {
    std::uint32_t number = 0;
    const auto [end, error] =
        std::from_chars(version.data(), version.data() + version.size(), number);
    if (error != std::errc()) return std::nullopt;
    numbers.push_back(number);
    version.remove_prefix(static_cast<std::size_t>(end - version.data()));
    if (version.empty()) break;
    if (version.front() != '.') return std::nullopt;
    version.remove_prefix(1);
  }
  while (!numbers.empty() && numbers.back() == 0) numbers.pop_back();
  return numbers;
}

}  // namespace

bool isUpdateKey(std::string_view key) {
  return decoded<crypto_sign_PUBLICKEYBYTES>(key).has_value();
}

std::optional<UpdateAnnouncement> readUpdateFeed(std::string_view feed, std::string_view key) {
  const std::size_t at = feed.rfind(std::string("\n").append(kSignature));
  if (at == std::string_view::npos) return std::nullopt;
  std::string_view text = feed.substr(0, at + 1);
  std::string_view signature = feed.substr(at + 1 + kSignature.size());
  if (signature.ends_with('\n')) signature.remove_suffix(1);
  if (!isSigned(text, signature, key)) return std::nullopt;
  if (!text.starts_with(kFirstLine)) return std::nullopt;
  text.remove_prefix(kFirstLine.size());
  const auto version = takeLine(text, "version ");
  const auto page = takeLine(text, "page ");
  if (!version || !page || !numbersOf(*version) || !page->starts_with("https://")) {
    return std::nullopt;
  }
  return UpdateAnnouncement{*version, *page};
}

bool isNewerVersion(std::string_view candidate, std::string_view current) {
  const auto numbers = numbersOf(candidate);
  const auto present = numbersOf(current);
  return numbers && (!present || *numbers > *present);
}

}  // namespace velotap
