#include "adapters/macos/core_foundation/cf_values.hpp"

#include <vector>

namespace velotap {
namespace {

// Deeper than any preferences file that a program writes on purpose; stops a malicious one.
constexpr int kDeepest = 64;

std::optional<Value> valueAt(const CoreFoundationApi& cf, CFTypeRef object, int depth);

template <typename Ref>
Ref as(CFTypeRef object) {
  return static_cast<Ref>(object);
}

struct Entries {
  std::vector<const void*> keys;
  std::vector<const void*> values;
};

Entries borrowedEntries(const CoreFoundationApi& cf, CFDictionaryRef dictionary) {
  const auto count = static_cast<std::size_t>(cf.CFDictionaryGetCount(dictionary));
  Entries entries{std::vector<const void*>(count), std::vector<const void*>(count)};
  cf.CFDictionaryGetKeysAndValues(dictionary, entries.keys.data(), entries.values.data());
  return entries;
}

bool isText(const CoreFoundationApi& cf, CFTypeRef object) {
  return cf.CFGetTypeID(object) == cf.CFStringGetTypeID();
}

std::optional<Value> numberValue(const CoreFoundationApi& cf, CFNumberRef number) {
  std::int64_t whole = 0;
  if (cf.CFNumberIsFloatType(number) == 0 &&
      cf.CFNumberGetValue(number, kCFNumberSInt64Type, &whole) != 0) {
    return Value(whole);
  }
  // Real numbers, and whole ones beyond 64 bits with a sign; the nearest one is what there is.
  double real = 0;
  cf.CFNumberGetValue(number, kCFNumberFloat64Type, &real);
  return Value(real);
}

std::optional<Value> arrayValue(const CoreFoundationApi& cf, CFArrayRef array, int depth) {
  ValueArray values;
  const CFIndex count = cf.CFArrayGetCount(array);
  for (CFIndex i = 0; i < count; ++i) {
    auto value = valueAt(cf, cf.CFArrayGetValueAtIndex(array, i), depth + 1);
    if (!value) return std::nullopt;
    values.push_back(std::move(*value));
  }
  return Value(std::move(values));
}

std::optional<Value> mapValue(const CoreFoundationApi& cf, CFDictionaryRef dictionary, int depth) {
  const Entries entries = borrowedEntries(cf, dictionary);
  ValueMap values;
  for (std::size_t i = 0; i < entries.keys.size(); ++i) {
    if (!isText(cf, entries.keys[i])) return std::nullopt;
    auto value = valueAt(cf, entries.values[i], depth + 1);
    if (!value) return std::nullopt;
    values.insert_or_assign(textOf(cf, as<CFStringRef>(entries.keys[i])), std::move(*value));
  }
  return Value(std::move(values));
}

std::optional<Value> valueAt(const CoreFoundationApi& cf, CFTypeRef object, int depth) {
  if (depth > kDeepest) return std::nullopt;
  const CFTypeID type = cf.CFGetTypeID(object);
  if (type == cf.CFBooleanGetTypeID()) {
    return Value(cf.CFBooleanGetValue(as<CFBooleanRef>(object)) != 0);
  }
  if (type == cf.CFNumberGetTypeID()) return numberValue(cf, as<CFNumberRef>(object));
  if (type == cf.CFStringGetTypeID()) return Value(textOf(cf, as<CFStringRef>(object)));
  if (type == cf.CFArrayGetTypeID()) return arrayValue(cf, as<CFArrayRef>(object), depth);
  if (type == cf.CFDictionaryGetTypeID()) return mapValue(cf, as<CFDictionaryRef>(object), depth);
  return std::nullopt;
}

using Objects = std::vector<CfRef<CFTypeRef>>;

std::vector<const void*> borrowed(const Objects& objects) {
  std::vector<const void*> pointers;
  pointers.reserve(objects.size());
  for (const auto& object : objects) pointers.push_back(object.get());
  return pointers;
}

CfRef<CFArrayRef> cfArray(const CoreFoundationApi& cf, const ValueArray& values) {
  Objects objects;
  for (const Value& value : values) {
    objects.push_back(cfValue(cf, value));
    if (!objects.back()) return {};
  }
  std::vector<const void*> pointers = borrowed(objects);
  return {cf, cf.CFArrayCreate(nullptr, pointers.data(), static_cast<CFIndex>(pointers.size()),
                               cf.kCFTypeArrayCallBacks)};
}

template <typename Ref>
CfRef<CFTypeRef> asObject(const CoreFoundationApi& cf, CfRef<Ref> object) {
  return {cf, object.release()};
}

}  // namespace

CfRef<CFStringRef> cfText(const CoreFoundationApi& cf, std::string_view text) {
  // The view's pointer may be null when it is empty, which the framework does not allow for.
  const char* bytes = text.empty() ? "" : text.data();
  return {cf,
          cf.CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8*>(bytes),
                                     static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, 0)};
}

std::string textOf(const CoreFoundationApi& cf, CFStringRef text) {
  const CFIndex length = cf.CFStringGetLength(text);
  const CFIndex most = cf.CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
  std::string bytes(static_cast<std::size_t>(most), '\0');
  CFIndex used = 0;
  cf.CFStringGetBytes(text, CFRange{0, length}, kCFStringEncodingUTF8, '?', 0,
                      reinterpret_cast<UInt8*>(bytes.data()), most, &used);
  bytes.resize(static_cast<std::size_t>(used));
  return bytes;
}

CfRef<CFTypeRef> cfValue(const CoreFoundationApi& cf, const Value& value) {
  if (const bool* boolean = value.boolean()) {
    return CfRef<CFTypeRef>::retaining(cf, *boolean ? *cf.kCFBooleanTrue : *cf.kCFBooleanFalse);
  }
  if (const auto* whole = value.integer()) {
    return {cf, cf.CFNumberCreate(nullptr, kCFNumberSInt64Type, whole)};
  }
  if (const double* real = value.real()) {
    return {cf, cf.CFNumberCreate(nullptr, kCFNumberFloat64Type, real)};
  }
  if (const auto* text = value.text()) return asObject(cf, cfText(cf, *text));
  if (const auto* array = value.array()) return asObject(cf, cfArray(cf, *array));
  return asObject(cf, cfDictionary(cf, *value.map()));
}

std::optional<Value> valueOf(const CoreFoundationApi& cf, CFTypeRef object) {
  return valueAt(cf, object, 0);
}

ValueMap entriesOf(const CoreFoundationApi& cf, CFDictionaryRef dictionary) {
  const Entries entries = borrowedEntries(cf, dictionary);
  ValueMap values;
  for (std::size_t i = 0; i < entries.keys.size(); ++i) {
    if (!isText(cf, entries.keys[i])) continue;
    if (auto value = valueOf(cf, entries.values[i])) {
      values.insert_or_assign(textOf(cf, as<CFStringRef>(entries.keys[i])), std::move(*value));
    }
  }
  return values;
}

CfRef<CFDictionaryRef> cfDictionary(const CoreFoundationApi& cf, const ValueMap& values) {
  Objects keys;
  Objects objects;
  for (const auto& [key, value] : values) {
    keys.push_back(asObject(cf, cfText(cf, key)));
    objects.push_back(cfValue(cf, value));
    if (!keys.back() || !objects.back()) return {};
  }
  std::vector<const void*> keyPointers = borrowed(keys);
  std::vector<const void*> valuePointers = borrowed(objects);
  return {cf, cf.CFDictionaryCreate(nullptr, keyPointers.data(), valuePointers.data(),
                                    static_cast<CFIndex>(keyPointers.size()),
                                    cf.kCFTypeDictionaryKeyCallBacks,
                                    cf.kCFTypeDictionaryValueCallBacks)};
}

CfRef<CFArrayRef> cfTexts(const CoreFoundationApi& cf, const std::vector<std::string>& texts) {
  return cfArray(cf, ValueArray(texts.begin(), texts.end()));
}

}  // namespace velotap
