#include "adapters/linux/dconf/dconf_snapshot.hpp"

#include <algorithm>
#include <cstddef>

#include "adapters/linux/dconf/gvdb.hpp"
#include "adapters/linux/files/read_file.hpp"

namespace velotap {
namespace {

// Many times what a desktop keeps there.
constexpr std::size_t kLargestDatabase = std::size_t{64} * 1024 * 1024;

std::string bytesOf(const std::string& path) {
  return readFile(path, kLargestDatabase).text;
}

std::string pathOf(std::string_view schema, std::string_view key) {
  std::string path = "/" + std::string(schema) + "/" + std::string(key);
  std::ranges::replace(path.begin(), path.begin() + 1 + static_cast<std::ptrdiff_t>(schema.size()),
                       '.', '/');
  return path;
}

/// Beside its default a key's entry can hold a dictionary of the defaults of single desktops.
std::optional<GVariant> desktopsDefault(const GVariant& entry,
                                        const std::vector<std::string>& desktops) {
  for (std::size_t i = 1; i < entry.childCount(); ++i) {
    const auto extra = entry.child(i);
    const auto tag = extra ? extra->child(0) : std::nullopt;
    if (!tag || tag->byte() != 'd') continue;
    const auto all = extra->child(1);
    if (!all) continue;
    for (const auto& desktop : desktops) {
      for (std::size_t j = 0; j < all->childCount(); ++j) {
        const auto pair = all->child(j);
        const auto name = pair ? pair->child(0) : std::nullopt;
        const auto value = pair ? pair->child(1) : std::nullopt;
        if (name && value && name->text() == desktop) return value->inside();
      }
    }
  }
  return std::nullopt;
}

}  // namespace

DconfSnapshot DconfSnapshot::load(const DconfPlaces& places) {
  DconfSnapshot snapshot;
  for (const auto& path : places.databases) snapshot.databases_.push_back(bytesOf(path));
  for (const auto& path : places.schemas) snapshot.schemas_.push_back(bytesOf(path));
  snapshot.desktops_ = places.desktops;
  return snapshot;
}

std::optional<GVariant> DconfSnapshot::value(std::string_view schema, std::string_view key) const {
  const auto otherwise = defaultOf(schema, key);
  if (!otherwise) return std::nullopt;
  const auto set = stored(pathOf(schema, key));
  // A stored value of another type is left over from another version; the default holds.
  return set && set->type() == otherwise->type() ? set : otherwise;
}

std::optional<GVariant> DconfSnapshot::defaultOf(std::string_view schema,
                                                 std::string_view key) const {
  for (const auto& bytes : schemas_) {
    const auto root = GvdbTable::open(bytes);
    const auto table = root ? root->table(schema) : std::nullopt;
    if (!table) continue;
    const auto entry = table->value(key);
    if (!entry) return std::nullopt;
    if (const auto desktops = desktopsDefault(*entry, desktops_)) return desktops;
    return entry->child(0);
  }
  return std::nullopt;
}

std::optional<GVariant> DconfSnapshot::stored(const std::string& path) const {
  std::vector<std::optional<GvdbTable>> tables;
  for (const auto& bytes : databases_) tables.push_back(GvdbTable::open(bytes));
  // A lock hides what the databases before its own say; of several the last one counts.
  std::size_t first = 0;
  for (std::size_t i = 1; i < tables.size(); ++i) {
    const auto locks = tables[i] ? tables[i]->table(".locks") : std::nullopt;
    if (locks && locks->contains(path)) first = i;
  }
  for (std::size_t i = first; i < tables.size(); ++i) {
    if (!tables[i]) continue;
    if (const auto value = tables[i]->value(path)) return value;
  }
  return std::nullopt;
}

std::optional<bool> DconfSnapshot::boolean(std::string_view schema, std::string_view key) const {
  const auto found = value(schema, key);
  return found ? found->boolean() : std::nullopt;
}

std::optional<std::string> DconfSnapshot::text(std::string_view schema,
                                               std::string_view key) const {
  const auto found = value(schema, key);
  const auto text = found ? found->text() : std::nullopt;
  if (!text) return std::nullopt;
  return std::string(*text);
}

std::optional<std::vector<std::string>> DconfSnapshot::texts(std::string_view schema,
                                                             std::string_view key) const {
  const auto found = value(schema, key);
  if (!found || found->type() != "as") return std::nullopt;
  std::vector<std::string> all;
  for (std::size_t i = 0; i < found->childCount(); ++i) {
    const auto child = found->child(i);
    const auto text = child ? child->text() : std::nullopt;
    if (text) all.emplace_back(*text);
  }
  return all;
}

std::optional<std::vector<std::pair<std::string, std::string>>> DconfSnapshot::pairs(
    std::string_view schema, std::string_view key) const {
  const auto found = value(schema, key);
  if (!found || found->type() != "a(ss)") return std::nullopt;
  std::vector<std::pair<std::string, std::string>> all;
  for (std::size_t i = 0; i < found->childCount(); ++i) {
    const auto pair = found->child(i);
    const auto first = pair ? pair->child(0) : std::nullopt;
    const auto second = pair ? pair->child(1) : std::nullopt;
    if (!first || !second || !first->text() || !second->text()) continue;
    all.emplace_back(*first->text(), *second->text());
  }
  return all;
}

}  // namespace velotap
