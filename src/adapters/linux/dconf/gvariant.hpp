// Reads values in the serialised form of GLib's GVariant, as dconf's databases hold them.
//
// A view: a type text and bytes that outlive it. Nothing is trusted: whatever does not fit its
// type gives nothing, never a wrong value and never a read beyond the bytes. All types that
// databases use can be walked; a maybe type cannot and gives nothing. Pure; any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velotap {

class GVariant {
 public:
  /// `swapped` when the bytes have the other byte order than this machine.
  GVariant(std::string_view type, std::string_view bytes, bool swapped = false) noexcept
      : type_(type), bytes_(bytes), swapped_(swapped) {}

  [[nodiscard]] std::string_view type() const noexcept { return type_; }

  [[nodiscard]] std::optional<bool> boolean() const noexcept;
  [[nodiscard]] std::optional<std::uint32_t> number() const noexcept;  ///< of type u
  [[nodiscard]] std::optional<std::uint8_t> byte() const noexcept;
  /// Of a text, object path or signature.
  [[nodiscard]] std::optional<std::string_view> text() const noexcept;
  /// What a variant holds.
  [[nodiscard]] std::optional<GVariant> inside() const noexcept;

  /// Of an array, tuple or dictionary entry; 0 for everything else and for what is malformed.
  [[nodiscard]] std::size_t childCount() const noexcept;
  [[nodiscard]] std::optional<GVariant> child(std::size_t index) const noexcept;

 private:
  [[nodiscard]] std::optional<GVariant> arrayChild(std::size_t index) const noexcept;
  [[nodiscard]] std::optional<GVariant> memberChild(std::size_t index) const noexcept;
  [[nodiscard]] std::size_t arraySize() const noexcept;
  [[nodiscard]] std::size_t offsetSize() const noexcept;
  [[nodiscard]] std::size_t offsetAt(std::size_t position) const noexcept;
  [[nodiscard]] std::optional<GVariant> slice(std::string_view type, std::size_t begin,
                                              std::size_t end) const noexcept;

  std::string_view type_;
  std::string_view bytes_;
  bool swapped_;
};

}  // namespace velotap
