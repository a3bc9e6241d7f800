// An application's identifier, interned: two are equal exactly when their text is, byte for byte,
// and comparing them costs one pointer comparison.
//
// The table of texts only grows and lives as long as the process; the number of applications that
// one user brings to the front bounds it. Interning takes a lock and may allocate, so it belongs
// to the thread that learns of an application, never to the frame path.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace velotap {

class AppId {
 public:
  /// No application.
  constexpr AppId() noexcept = default;

  /// The identifier with this text; safe from any thread. An empty text is an identifier of its
  /// own, different from "no application".
  [[nodiscard]] static AppId intern(std::string_view text);

  [[nodiscard]] constexpr bool present() const noexcept { return text_ != nullptr; }
  explicit constexpr operator bool() const noexcept { return present(); }
  /// The text; empty for no application. Valid for the life of the process.
  [[nodiscard]] std::string_view text() const noexcept {
    return text_ != nullptr ? std::string_view(*text_) : std::string_view();
  }

  friend constexpr bool operator==(AppId, AppId) noexcept = default;
  [[nodiscard]] std::size_t hash() const noexcept { return std::hash<const void*>()(text_); }

 private:
  explicit constexpr AppId(const std::string* text) noexcept : text_(text) {}
  const std::string* text_ = nullptr;
};

}  // namespace velotap
