#include "config/defaults_store.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/utf8.hpp"
#include "platform/platform.hpp"

namespace velotap {
namespace {

// Blanks, a sign and zeros are skipped; what follows decides by its first character.
bool textReadsTrue(std::string_view text) noexcept {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return false;
  text.remove_prefix(start);
  if (text.front() == '+' || text.front() == '-') text.remove_prefix(1);
  while (!text.empty() && text.front() == '0') text.remove_prefix(1);
  if (text.empty()) return false;
  return std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

bool booleanReading(const Value& value) noexcept {
  if (const bool* boolean = value.boolean()) return *boolean;
  if (const std::int64_t* integer = value.integer()) return *integer != 0;
  if (const double* real = value.real()) return *real != 0;
  if (const std::string* text = value.text()) return textReadsTrue(*text);
  return false;
}

bool isStorable(const Value& value) {
  if (const double* real = value.real()) return std::isfinite(*real);
  if (const std::string* text = value.text()) return isUtf8(*text);
  if (const ValueArray* array = value.array()) {
    return std::all_of(array->begin(), array->end(), isStorable);
  }
  if (const ValueMap* map = value.map()) {
    return std::all_of(map->begin(), map->end(), [](const auto& entry) {
      return isUtf8(entry.first) && isStorable(entry.second);
    });
  }
  return true;
}

DefaultsStore::DefaultsStore(PreferencesStorage& storage, DiagnosticLog& log,
                             std::string_view domain)
    : storage_(storage), log_(log), domain_(domain), stored_(storage.load(domain)) {
  foreignChanges_ = storage_.observe(domain_, [this] { reload(); });
}

DefaultsStore& DefaultsStore::shared() {
  static DefaultsStore instance(Platform::current().preferences, Platform::current().log);
  return instance;
}

std::optional<Value> DefaultsStore::object(std::string_view key) const {
  const std::string name(key);
  const std::lock_guard guard(lock_);
  for (const ValueMap* layer : {&stored_, &registered_}) {
    if (const auto found = layer->find(name); found != layer->end()) return found->second;
  }
  return std::nullopt;
}

bool DefaultsStore::boolean(std::string_view key) const {
  const auto value = object(key);
  return value && booleanReading(*value);
}

std::optional<std::string> DefaultsStore::text(std::string_view key) const {
  const auto value = object(key);
  if (!value || value->text() == nullptr) return std::nullopt;
  return *value->text();
}

std::vector<std::string> DefaultsStore::texts(std::string_view key) const {
  std::vector<std::string> texts;
  const auto value = object(key);
  if (!value || value->array() == nullptr) return texts;
  for (const Value& item : *value->array()) {
    if (item.text() == nullptr) return {};
    texts.push_back(*item.text());
  }
  return texts;
}

bool DefaultsStore::set(std::string_view key, Value value) {
  if (!isUtf8(key) || !isStorable(value)) {
    say("a value that no settings file can hold was refused");
    return false;
  }
  return write(key, std::move(value));
}

bool DefaultsStore::remove(std::string_view key) {
  return write(key, std::nullopt);
}

bool DefaultsStore::write(std::string_view key, std::optional<Value> value) {
  unwritten_.insert_or_assign(std::string(key), std::move(value));
  ValueMap values;
  {
    const std::lock_guard guard(lock_);
    apply(unwritten_, stored_);
    values = stored_;
  }
  // The storage may tell of other writers' changes meanwhile, and whoever hears of them may write.
  const Changes attempt = unwritten_;
  const bool written = storage_.store(domain_, values);
  if (written) {
    forget(attempt);
  } else {
    say("settings could not be written");
  }
  changes_.notify();
  return written;
}

void DefaultsStore::apply(const Changes& changes, ValueMap& values) {
  for (const auto& [key, value] : changes) {
    if (value) {
      values.insert_or_assign(key, *value);
    } else {
      values.erase(key);
    }
  }
}

void DefaultsStore::forget(const Changes& written) {
  std::erase_if(unwritten_, [&written](const auto& change) {
    const auto found = written.find(change.first);
    return found != written.end() && found->second == change.second;
  });
}

void DefaultsStore::say(std::string_view line) {
  if (log_.enabled()) log_.line(line);
}

void DefaultsStore::registerDefaults(const ValueMap& values) {
  {
    const std::lock_guard guard(lock_);
    for (const auto& [key, value] : values) registered_.insert_or_assign(key, value);
  }
  changes_.notify();
}

void DefaultsStore::reload() {
  ValueMap values = storage_.load(domain_);
  apply(unwritten_, values);
  {
    const std::lock_guard guard(lock_);
    stored_ = std::move(values);
  }
  changes_.notify();
}

Observation DefaultsStore::observeChanges(std::function<void()> changed) {
  return changes_.add(std::move(changed));
}

}  // namespace velotap
