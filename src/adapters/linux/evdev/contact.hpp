// One contact as the kernel reports it, and a frame's worth of them.
#pragma once

#include <cstdint>

#include "base/fixed_vector.hpp"

namespace velotap {

struct RawContact {
  std::int32_t id = -1;  ///< tracking identifier; -1 for no contact
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t major = 0;
  std::int32_t minor = 0;
  std::int32_t pressure = 0;
  [[nodiscard]] bool down() const noexcept { return id >= 0; }
};

/// More than anybody can put down; further ones are not looked at.
inline constexpr std::size_t kMaxContacts = 32;
using RawContacts = FixedVector<RawContact, kMaxContacts>;

}  // namespace velotap
