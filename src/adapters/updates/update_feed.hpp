// Reads what the maker of the program announces: a few signed lines that name the newest version
// and where to get it.
//
//     velotap-updates 1
//     version 1.4.2
//     page https://example.com/velotap
//     signature BASE64
//
// The signature (Ed25519) covers every byte before its line, so nobody between the maker and the
// person can announce anything. Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velotap {

struct UpdateAnnouncement {
  std::string version;
  std::string page;  ///< an https address
};

/// 32 bytes in base64; anything else is no key.
[[nodiscard]] bool isUpdateKey(std::string_view key);

/// Nothing for a feed that the key did not sign, or that makes no sense.
[[nodiscard]] std::optional<UpdateAnnouncement> readUpdateFeed(std::string_view feed,
                                                               std::string_view key);

/// Whether a version, in numbers separated by dots, is newer than another; a missing number counts
/// as zero. What is no version is never newer.
[[nodiscard]] bool isNewerVersion(std::string_view candidate, std::string_view current);

}  // namespace velotap
