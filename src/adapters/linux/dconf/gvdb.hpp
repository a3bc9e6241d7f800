// Looks keys up in a GVDB file: the hash table on disk in which dconf keeps settings and GLib keeps
// compiled schemas.
//
// A view of bytes that outlive it. The file is not trusted: a broken one lacks keys, and is never
// read beyond its end. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "adapters/linux/dconf/gvariant.hpp"

namespace velotap {

class GvdbTable {
 public:
  /// The root table of a file; nothing when it is not a GVDB file.
  [[nodiscard]] static std::optional<GvdbTable> open(std::string_view file) noexcept;

  [[nodiscard]] std::optional<GVariant> value(std::string_view key) const noexcept;
  [[nodiscard]] std::optional<GvdbTable> table(std::string_view key) const noexcept;
  [[nodiscard]] bool contains(std::string_view key) const noexcept;

 private:
  struct Item {
    std::uint32_t hash = 0;
    std::uint32_t parent = 0;
    std::string_view keyPart;
    char type = '\0';
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
  };

  GvdbTable(std::string_view file, bool swapped) noexcept : file_(file), swapped_(swapped) {}
  [[nodiscard]] static std::optional<GvdbTable> at(std::string_view file, bool swapped,
                                                   std::uint32_t begin, std::uint32_t end) noexcept;
  [[nodiscard]] std::optional<Item> find(std::string_view key) const noexcept;
  [[nodiscard]] std::optional<Item> item(std::size_t index) const noexcept;
  [[nodiscard]] bool isCalled(Item item, std::string_view key) const noexcept;
  [[nodiscard]] std::optional<std::string_view> range(std::uint32_t begin,
                                                      std::uint32_t end) const noexcept;

  std::string_view file_;
  bool swapped_ = false;
  std::size_t buckets_ = 0;  ///< where the buckets begin in the file
  std::size_t bucketCount_ = 0;
  std::size_t items_ = 0;  ///< where the items begin in the file
  std::size_t itemCount_ = 0;
};

}  // namespace velotap
