#include "adapters/linux/dconf/gvdb.hpp"

#include <algorithm>

namespace velotap {
namespace {

// All numbers of the format itself are little-endian. A file whose values are big-endian has the
// two halves of its signature byte-swapped.
constexpr std::string_view kSignature = "GVariant";
constexpr std::string_view kSwappedSignature = "raVGtnai";
constexpr std::size_t kHeaderSize = 24;
constexpr std::size_t kRootPointer = 16;
constexpr std::size_t kTableHeaderSize = 8;
constexpr std::size_t kItemSize = 24;
constexpr std::uint32_t kBloomWordMask = (1U << 27) - 1;
constexpr std::uint32_t kNoParent = 0xffffffff;

std::uint32_t wordAt(std::string_view bytes, std::size_t position, std::size_t size = 4) noexcept {
  std::uint32_t value = 0;
  for (std::size_t i = size; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes[position + i]);
  }
  return value;
}

std::uint32_t hashOf(std::string_view key) noexcept {
  std::uint32_t hash = 5381;
  for (const char c : key) {
    hash = hash * 33 + static_cast<std::uint32_t>(static_cast<signed char>(c));
  }
  return hash;
}

}  // namespace

std::optional<GvdbTable> GvdbTable::open(std::string_view file) noexcept {
  if (file.size() < kHeaderSize) return std::nullopt;
  const bool swapped = file.starts_with(kSwappedSignature);
  if (!swapped && !file.starts_with(kSignature)) return std::nullopt;
  if (wordAt(file, 8) != 0) return std::nullopt;  // the only version there is
  return at(file, swapped, wordAt(file, kRootPointer), wordAt(file, kRootPointer + 4));
}

std::optional<GvdbTable> GvdbTable::at(std::string_view file, bool swapped, std::uint32_t begin,
                                       std::uint32_t end) noexcept {
  GvdbTable table(file, swapped);
  const auto bytes = table.range(begin, end);
  if (!bytes || bytes->size() < kTableHeaderSize) return std::nullopt;
  const std::size_t bloomWords = wordAt(*bytes, 0) & kBloomWordMask;
  table.bucketCount_ = wordAt(*bytes, 4);
  const std::size_t words = bloomWords + table.bucketCount_;
  if (words > (bytes->size() - kTableHeaderSize) / 4) return std::nullopt;
  table.buckets_ = begin + kTableHeaderSize + bloomWords * 4;
  table.items_ = begin + kTableHeaderSize + words * 4;
  table.itemCount_ = (end - table.items_) / kItemSize;
  return table;
}

std::optional<GVariant> GvdbTable::value(std::string_view key) const noexcept {
  const auto item = find(key);
  if (!item || item->type != 'v') return std::nullopt;
  const auto bytes = range(item->begin, item->end);
  if (!bytes) return std::nullopt;
  return GVariant("v", *bytes, swapped_ != (__BYTE_ORDER__ == __ORDER_BIG_ENDIAN__)).inside();
}

std::optional<GvdbTable> GvdbTable::table(std::string_view key) const noexcept {
  const auto item = find(key);
  if (!item || item->type != 'H') return std::nullopt;
  return at(file_, swapped_, item->begin, item->end);
}

bool GvdbTable::contains(std::string_view key) const noexcept {
  return find(key).has_value();
}

std::optional<GvdbTable::Item> GvdbTable::find(std::string_view key) const noexcept {
  if (bucketCount_ == 0) return std::nullopt;
  const std::uint32_t hash = hashOf(key);
  const std::size_t bucket = hash % bucketCount_;
  const std::size_t first = wordAt(file_, buckets_ + bucket * 4);
  const std::size_t last =
      bucket + 1 == bucketCount_
          ? itemCount_
          : std::min<std::size_t>(wordAt(file_, buckets_ + (bucket + 1) * 4), itemCount_);
  for (std::size_t i = first; i < last; ++i) {
    const auto candidate = item(i);
    if (candidate && candidate->hash == hash && isCalled(*candidate, key)) return candidate;
  }
  return std::nullopt;
}

std::optional<GvdbTable::Item> GvdbTable::item(std::size_t index) const noexcept {
  if (index >= itemCount_) return std::nullopt;
  const std::size_t at = items_ + index * kItemSize;
  const std::uint32_t keyStart = wordAt(file_, at + 8);
  const std::uint32_t keySize = wordAt(file_, at + 12, 2);
  const auto keyPart = range(keyStart, keyStart + keySize);
  if (!keyPart) return std::nullopt;
  return Item{.hash = wordAt(file_, at),
              .parent = wordAt(file_, at + 4),
              .keyPart = *keyPart,
              .type = file_[at + 14],
              .begin = wordAt(file_, at + 16),
              .end = wordAt(file_, at + 20)};
}

/// A key is cut into parts; an item holds the last one and points to the item with the others.
bool GvdbTable::isCalled(Item item, std::string_view key) const noexcept {
  // A broken file can make the chain a circle.
  for (std::size_t steps = 0; steps <= itemCount_; ++steps) {
    if (!key.ends_with(item.keyPart)) return false;
    key.remove_suffix(item.keyPart.size());
    if (item.parent == kNoParent) return key.empty();
    const auto parent = this->item(item.parent);
    if (!parent) return false;
    item = *parent;
  }
  return false;
}

std::optional<std::string_view> GvdbTable::range(std::uint32_t begin,
                                                 std::uint32_t end) const noexcept {
  if (begin > end || end > file_.size()) return std::nullopt;
  return file_.substr(begin, end - begin);
}

}  // namespace velotap
