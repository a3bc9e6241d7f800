// Asks everything of a value and of all that it holds.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "adapters/linux/dconf/gvariant.hpp"

namespace velotap::fuzz {

inline void require(bool holds) {
  if (!holds) std::abort();
}

/// Follows values until `budget` of them were seen: an array may claim an element for each byte,
/// and every one of them another. All texts must lie within `bytes`.
inline void walk(const GVariant& value, std::string_view bytes, std::size_t& budget) {
  if (budget == 0) return;
  --budget;
  const int answers =
      static_cast<int>(value.boolean().has_value()) + static_cast<int>(value.byte().has_value()) +
      static_cast<int>(value.number().has_value()) + static_cast<int>(value.text().has_value()) +
      static_cast<int>(value.inside().has_value());
  require(answers <= 1);  // a value has one type
  const std::size_t children = value.childCount();
  require(answers == 0 || children == 0);
  require(!value.child(children));
  if (const auto text = value.text()) {
    require(text->find('\0') == std::string_view::npos);
    require(text->data() >= bytes.data());
    require(text->data() + text->size() <= bytes.data() + bytes.size());
  }
  if (const auto inside = value.inside()) walk(*inside, bytes, budget);
  for (std::size_t i = 0; i < children && budget > 0; ++i) {
    if (const auto child = value.child(i)) walk(*child, bytes, budget);
  }
}

}  // namespace velotap::fuzz
