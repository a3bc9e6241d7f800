#include "adapters/linux/dconf/gvariant.hpp"

#include <algorithm>
#include <cstring>

namespace velotap {
namespace {

// Types nest; a text that nests deeper than any real one is malformed, not a reason to recurse.
constexpr int kDeepest = 32;

struct Layout {
  std::size_t alignment = 1;
  std::size_t size = 0;  ///< 0: the size varies
};

/// How long the first complete type at the beginning of `types` is; 0 when there is none.
std::size_t typeLength(std::string_view types, int depth = 0) noexcept {
  if (types.empty() || depth > kDeepest) return 0;
  const char first = types[0];
  if (std::string_view("bynqiuxthdsogv").find(first) != std::string_view::npos) return 1;
  if (first == 'a') {
    const std::size_t element = typeLength(types.substr(1), depth + 1);
    return element == 0 ? 0 : element + 1;
  }
  if (first != '(' && first != '{') return 0;
  const char closing = first == '(' ? ')' : '}';
  std::size_t length = 1;
  while (length < types.size() && types[length] != closing) {
    const std::size_t member = typeLength(types.substr(length), depth + 1);
    if (member == 0) return 0;
    length += member;
  }
  return length < types.size() ? length + 1 : 0;
}

std::size_t alignedUp(std::size_t position, std::size_t alignment) noexcept {
  return (position + alignment - 1) / alignment * alignment;
}

/// The member types of a tuple or dictionary entry, without its brackets.
std::string_view members(std::string_view type) noexcept {
  return type.size() < 2 ? std::string_view() : type.substr(1, type.size() - 2);
}

Layout layoutOf(std::string_view type) noexcept;

Layout layoutOfMembers(std::string_view type) noexcept {
  Layout whole;
  bool fixed = true;
  for (std::string_view rest = members(type); !rest.empty();) {
    const std::string_view member = rest.substr(0, typeLength(rest));
    if (member.empty()) return {};
    const Layout layout = layoutOf(member);
    whole.alignment = std::max(whole.alignment, layout.alignment);
    whole.size = alignedUp(whole.size, layout.alignment) + layout.size;
    fixed = fixed && layout.size != 0;
    rest.remove_prefix(member.size());
  }
  // The empty tuple takes one byte.
  whole.size = fixed ? std::max<std::size_t>(alignedUp(whole.size, whole.alignment), 1) : 0;
  return whole;
}

Layout layoutOf(std::string_view type) noexcept {
  switch (type.empty() ? '\0' : type[0]) {
    case 'b':
    case 'y':
      return {.alignment = 1, .size = 1};
    case 'n':
    case 'q':
      return {.alignment = 2, .size = 2};
    case 'i':
    case 'u':
    case 'h':
      return {.alignment = 4, .size = 4};
    case 'x':
    case 't':
    case 'd':
      return {.alignment = 8, .size = 8};
    case 'v':
      return {.alignment = 8, .size = 0};
    case 'a':
      return {.alignment = layoutOf(type.substr(1)).alignment, .size = 0};
    case '(':
    case '{':
      return layoutOfMembers(type);
    default:
      return {.alignment = 1, .size = 0};  // texts
  }
}

}  // namespace

std::optional<bool> GVariant::boolean() const noexcept {
  if (type_ != "b" || bytes_.size() != 1) return std::nullopt;
  return bytes_[0] != '\0';
}

std::optional<std::uint8_t> GVariant::byte() const noexcept {
  if (type_ != "y" || bytes_.size() != 1) return std::nullopt;
  return static_cast<std::uint8_t>(bytes_[0]);
}

std::optional<std::uint32_t> GVariant::number() const noexcept {
  if (type_ != "u" || bytes_.size() != sizeof(std::uint32_t)) return std::nullopt;
  std::uint32_t value = 0;
  std::memcpy(&value, bytes_.data(), sizeof value);
  return swapped_ ? __builtin_bswap32(value) : value;
}

std::optional<std::string_view> GVariant::text() const noexcept {
  if (type_ != "s" && type_ != "o" && type_ != "g") return std::nullopt;
  if (bytes_.empty() || bytes_.find('\0') != bytes_.size() - 1) return std::nullopt;
  return bytes_.substr(0, bytes_.size() - 1);
}

std::optional<GVariant> GVariant::inside() const noexcept {
  if (type_ != "v") return std::nullopt;
  const std::size_t end = bytes_.rfind('\0');
  if (end == std::string_view::npos) return std::nullopt;
  const std::string_view type = bytes_.substr(end + 1);
  if (type.empty() || typeLength(type) != type.size()) return std::nullopt;
  return GVariant(type, bytes_.substr(0, end), swapped_);
}

std::size_t GVariant::childCount() const noexcept {
  if (typeLength(type_) != type_.size() || type_.empty()) return 0;
  if (type_[0] == 'a') return arraySize();
  if (type_[0] != '(' && type_[0] != '{') return 0;
  std::size_t count = 0;
  for (std::string_view rest = members(type_); !rest.empty(); ++count) {
    rest.remove_prefix(typeLength(rest));
  }
  return count;
}

std::optional<GVariant> GVariant::child(std::size_t index) const noexcept {
  if (index >= childCount()) return std::nullopt;
  return type_[0] == 'a' ? arrayChild(index) : memberChild(index);
}

std::size_t GVariant::arraySize() const noexcept {
  const std::size_t fixed = layoutOf(type_.substr(1)).size;
  if (bytes_.empty()) return 0;
  if (fixed != 0) return bytes_.size() % fixed == 0 ? bytes_.size() / fixed : 0;
  // Elements of varying size are followed by a table of where each ends, the last of which is
  // where the table begins.
  const std::size_t table = offsetAt(bytes_.size() - offsetSize());
  if (table >= bytes_.size() || (bytes_.size() - table) % offsetSize() != 0) return 0;
  return (bytes_.size() - table) / offsetSize();
}

std::optional<GVariant> GVariant::arrayChild(std::size_t index) const noexcept {
  const std::string_view type = type_.substr(1);
  const Layout layout = layoutOf(type);
  if (layout.size != 0) return slice(type, index * layout.size, (index + 1) * layout.size);
  const std::size_t table = offsetAt(bytes_.size() - offsetSize());
  const auto endOf = [&](std::size_t i) { return offsetAt(table + i * offsetSize()); };
  const std::size_t begin = index == 0 ? 0 : alignedUp(endOf(index - 1), layout.alignment);
  const std::size_t end = endOf(index);
  return end <= table ? slice(type, begin, end) : std::nullopt;
}

std::optional<GVariant> GVariant::memberChild(std::size_t index) const noexcept {
  // Members of varying size end where a table at the end says, read backwards; the last member
  // has no entry, because it ends where the table begins.
  std::size_t tableEntries = 0;
  std::size_t position = 0;
  std::string_view rest = members(type_);
  for (std::size_t i = 0;; ++i) {
    const std::string_view type = rest.substr(0, typeLength(rest));
    rest.remove_prefix(type.size());
    const Layout layout = layoutOf(type);
    const std::size_t begin = alignedUp(position, layout.alignment);
    std::size_t end = 0;
    if (layout.size != 0) {
      end = begin + layout.size;
    } else if (rest.empty()) {
      if (tableEntries * offsetSize() > bytes_.size()) return std::nullopt;
      end = bytes_.size() - tableEntries * offsetSize();
    } else {
      ++tableEntries;
      if (tableEntries * offsetSize() > bytes_.size()) return std::nullopt;
      end = offsetAt(bytes_.size() - tableEntries * offsetSize());
    }
    if (i == index) return slice(type, begin, end);
    if (end < begin || end > bytes_.size()) return std::nullopt;
    position = end;
  }
}

std::size_t GVariant::offsetSize() const noexcept {
  if (bytes_.size() <= 0xff) return 1;
  if (bytes_.size() <= 0xffff) return 2;
  if (bytes_.size() <= 0xffffffff) return 4;
  return 8;
}

/// Offsets are little-endian whatever the byte order of the values.
std::size_t GVariant::offsetAt(std::size_t position) const noexcept {
  std::size_t value = 0;
  if (position > bytes_.size() || bytes_.size() - position < offsetSize()) return bytes_.size() + 1;
  for (std::size_t i = offsetSize(); i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes_[position + i]);
  }
  return value;
}

std::optional<GVariant> GVariant::slice(std::string_view type, std::size_t begin,
                                        std::size_t end) const noexcept {
  if (begin > end || end > bytes_.size()) return std::nullopt;
  return GVariant(type, bytes_.substr(begin, end - begin), swapped_);
}

}  // namespace velotap
