#include "config/defaults_store.hpp"

#include <utility>

#include "platform/platform.hpp"

namespace velotap {
namespace {

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
  return write(
      [&](ValueMap& stored) { stored.insert_or_assign(std::string(key), std::move(value)); });
}

bool DefaultsStore::remove(std::string_view key) {
  return write([&](ValueMap& stored) { stored.erase(std::string(key)); });
}

bool DefaultsStore::write(const std::function<void(ValueMap&)>& change) {
  ValueMap values;
  {
    const std::lock_guard guard(lock_);
    change(stored_);
    values = stored_;
  }
  const bool written = storage_.store(domain_, values);
  if (!written && log_.enabled()) log_.line("settings could not be written");
  changes_.notify();
  return written;
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
