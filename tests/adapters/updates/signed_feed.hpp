// A maker of updates with a key of her own, for tests.
#pragma once

#include <sodium.h>

#include <array>
#include <stdexcept>
#include <string>

namespace velotap::test {

class Maker {
 public:
  Maker() {
    if (sodium_init() < 0 || crypto_sign_keypair(public_.data(), secret_.data()) != 0) {
      throw std::runtime_error("no keys");
    }
  }
  [[nodiscard]] std::string key() const { return base64(public_.data(), public_.size()); }
  [[nodiscard]] std::string sign(const std::string& text) const {
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr,
                         reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                         secret_.data());
    return text + "signature " + base64(signature.data(), signature.size()) + "\n";
  }
  [[nodiscard]] std::string announce(const std::string& version,
                                     const std::string& page = "https://example.com/get") const {
    return sign("velotap-updates 1\nversion " + version + "\npage " + page + "\n");
  }
  static std::string base64(const unsigned char* bytes, std::size_t length) {
    std::string text(sodium_base64_encoded_len(length, sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes, length, sodium_base64_VARIANT_ORIGINAL);
    text.pop_back();
    return text;
  }

 private:
  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> public_{};
  std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret_{};
};

}  // namespace velotap::test
