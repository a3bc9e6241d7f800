#include "fakes/fake_core_foundation.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace velotap::test {
namespace {

FakeCoreFoundation* running = nullptr;

FakeCoreFoundation& fake() {
  return FakeCoreFoundation::current();
}

template <typename Ref>
Ref reference(const FakeObject& object) {
  return static_cast<Ref>(static_cast<const void*>(&object));
}

CFTypeID typeId(FakeKind kind) {
  return static_cast<CFTypeID>(kind) + 1;
}

// Tables of callbacks are opaque; only their addresses matter.
alignas(8) char arrayCallBacks[8];
alignas(8) char keyCallBacks[8];
alignas(8) char valueCallBacks[8];

template <typename CallBacks>
const CallBacks* address(const char* storage) {
  return reinterpret_cast<const CallBacks*>(storage);
}

bool isUtf8(std::string_view text) {
  std::size_t follow = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (follow > 0) {
      if ((byte & 0xC0) != 0x80) return false;
      --follow;
    } else if (byte >= 0x80) {
      if (byte < 0xC2 || byte > 0xF4) return false;
      follow = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
    }
  }
  return follow == 0;
}

CFIndex utf16Length(std::string_view text) {
  return std::count_if(text.begin(), text.end(),
                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }) +
         std::count_if(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0xF0; });
}

}  // namespace

FakeCoreFoundation& FakeCoreFoundation::current() {
  return *running;
}

FakeCoreFoundation::FakeCoreFoundation()
    : loop_(makeConstant(FakeKind::loop, "main loop")),
      center_(makeConstant(FakeKind::center, "distributed center")),
      true_(reference<CFBooleanRef>(makeConstant(FakeKind::boolean, "true"))),
      false_(reference<CFBooleanRef>(makeConstant(FakeKind::boolean, "false"))),
      commonModes_(reference<CFStringRef>(makeConstant(FakeKind::string, "common modes"))),
      defaultMode_(reference<CFStringRef>(makeConstant(FakeKind::string, "default mode"))),
      currentUser_(reference<CFStringRef>(makeConstant(FakeKind::string, "current user"))),
      anyHost_(reference<CFStringRef>(makeConstant(FakeKind::string, "any host"))) {
  EXPECT_EQ(running, nullptr) << "one fake at a time";
  running = this;
  fillApi();
}

FakeCoreFoundation::~FakeCoreFoundation() {
  for (auto& [name, domain] : preferences_) {
    for (auto& [key, value] : domain) release(*value);
  }
  EXPECT_TRUE(loopSources.empty()) << "sources were left in the main loop";
  EXPECT_TRUE(observers_.empty()) << "observers were left in the center";
  for (const auto& [address, object] : objects_) {
    const int expected = object->constant ? 1 : 0;
    EXPECT_EQ(object->references, expected)
        << "an object of kind " << static_cast<int>(object->kind) << " (" << object->text
        << ") has references left";
  }
  running = nullptr;
}

FakeObject& FakeCoreFoundation::make(FakeKind kind, std::string text) {
  auto object = std::make_unique<FakeObject>();
  object->kind = kind;
  object->text = std::move(text);
  FakeObject& made = *object;
  objects_.emplace(&made, std::move(object));
  return made;
}

FakeObject& FakeCoreFoundation::makeNumber(std::variant<std::int64_t, double> number) {
  FakeObject& object = make(FakeKind::number);
  object.number = number;
  return object;
}

FakeObject& FakeCoreFoundation::makeDictionary(FakeEntries entries) {
  FakeObject& object = make(FakeKind::dictionary);
  object.entries = std::move(entries);
  return object;
}

FakeObject& FakeCoreFoundation::makeArray(std::vector<const FakeObject*> elements) {
  FakeObject& object = make(FakeKind::array);
  object.elements = std::move(elements);
  return object;
}

FakeObject& FakeCoreFoundation::makeConstant(FakeKind kind, std::string text) {
  FakeObject& object = make(kind, std::move(text));
  object.constant = true;
  return object;
}

FakeObject& FakeCoreFoundation::live(const void* reference) {
  static FakeObject nothing;
  const auto found = objects_.find(reference);
  if (found == objects_.end()) {
    ADD_FAILURE() << "a reference to no object: " << reference;
    return nothing;
  }
  EXPECT_GT(found->second->references, 0) << "use of an object that is gone";
  return *found->second;
}

FakeObject& FakeCoreFoundation::live(const void* reference, FakeKind kind) {
  FakeObject& object = live(reference);
  EXPECT_EQ(static_cast<int>(object.kind), static_cast<int>(kind));
  return object;
}

void FakeCoreFoundation::retain(const FakeObject& object) {
  ++live(&object).references;
}

void FakeCoreFoundation::release(const FakeObject& object) {
  FakeObject& released = live(&object);
  if (--released.references == 0) destroy(released);
}

// The object stays as a mark of where it was, so that a later use is noticed.
void FakeCoreFoundation::destroy(FakeObject& object) {
  EXPECT_FALSE(object.constant) << "a constant was released once too often";
  for (const FakeObject* element : std::exchange(object.elements, {})) release(*element);
  for (const auto& [key, value] : std::exchange(object.entries, {})) {
    release(*key);
    release(*value);
  }
  object.extra.reset();
}

void FakeCoreFoundation::preferSet(const std::string& domain, const std::string& key,
                                   const FakeObject& value) {
  preferRemove(domain, key);
  preferences_[domain][key] = &value;
}

void FakeCoreFoundation::preferRemove(const std::string& domain, const std::string& key) {
  const auto found = preferences_[domain].find(key);
  if (found == preferences_[domain].end()) return;
  release(*found->second);
  preferences_[domain].erase(found);
}

const FakeObject* FakeCoreFoundation::preferred(const std::string& domain,
                                                const std::string& key) const {
  const auto place = preferences_.find(domain);
  if (place == preferences_.end()) return nullptr;
  const auto found = place->second.find(key);
  return found == place->second.end() ? nullptr : found->second;
}

std::size_t FakeCoreFoundation::preferredCount(const std::string& domain) const {
  const auto place = preferences_.find(domain);
  return place == preferences_.end() ? 0 : place->second.size();
}

void FakeCoreFoundation::notify(std::string_view name) {
  FakeObject& text = make(FakeKind::string, std::string(name));
  const std::vector<Observer> told = observers_;
  for (const Observer& observer : told) {
    if (observer.name != name) continue;
    observer.callback(static_cast<CFNotificationCenterRef>(static_cast<void*>(&center_)),
                      const_cast<void*>(observer.observer), reference<CFStringRef>(text), nullptr,
                      nullptr);
  }
  release(text);
}

void FakeCoreFoundation::fillApi() {
  api_.CFRetain = [](CFTypeRef object) {
    fake().retain(fake().live(object));
    return object;
  };
  api_.CFRelease = [](CFTypeRef object) {
    if (object == nullptr) {
      ADD_FAILURE() << "the framework crashes on a release of null";
      return;
    }
    FakeObject& released = fake().live(object);
    fake().calls.push_back("CFRelease " + std::to_string(static_cast<int>(released.kind)));
    fake().release(released);
  };
  api_.CFGetTypeID = [](CFTypeRef object) { return typeId(fake().live(object).kind); };
  fillCollections();
  fillScalars();
  fillLoops();
  fillPreferences();
  fillCenters();
}

void FakeCoreFoundation::fillCollections() {
  api_.kCFTypeArrayCallBacks = address<CFArrayCallBacks>(arrayCallBacks);
  api_.kCFTypeDictionaryKeyCallBacks = address<CFDictionaryKeyCallBacks>(keyCallBacks);
  api_.kCFTypeDictionaryValueCallBacks = address<CFDictionaryValueCallBacks>(valueCallBacks);
  api_.CFArrayCreate = [](CFAllocatorRef, const void** values, CFIndex count,
                          const CFArrayCallBacks* callBacks) -> CFArrayRef {
    EXPECT_EQ(callBacks, fake().api_.kCFTypeArrayCallBacks) << "elements would not be retained";
    if (fake().fails("CFArrayCreate")) return nullptr;
    std::vector<const FakeObject*> elements;
    for (CFIndex i = 0; i < count; ++i) {
      elements.push_back(&fake().live(values[i]));
      fake().retain(*elements.back());
    }
    return reference<CFArrayRef>(fake().makeArray(std::move(elements)));
  };
  api_.CFArrayGetCount = [](CFArrayRef array) {
    return static_cast<CFIndex>(fake().live(array, FakeKind::array).elements.size());
  };
  api_.CFArrayGetValueAtIndex = [](CFArrayRef array, CFIndex index) {
    return static_cast<const void*>(
        fake().live(array, FakeKind::array).elements.at(static_cast<std::size_t>(index)));
  };
  api_.CFArrayGetTypeID = [] { return typeId(FakeKind::array); };
  api_.CFDictionaryCreate = [](CFAllocatorRef, const void** keys, const void** values,
                               CFIndex count, const CFDictionaryKeyCallBacks* forKeys,
                               const CFDictionaryValueCallBacks* forValues) -> CFDictionaryRef {
    EXPECT_EQ(forKeys, fake().api_.kCFTypeDictionaryKeyCallBacks) << "keys would not be retained";
    EXPECT_EQ(forValues, fake().api_.kCFTypeDictionaryValueCallBacks)
        << "values would not be retained";
    if (fake().fails("CFDictionaryCreate")) return nullptr;
    FakeEntries entries;
    for (CFIndex i = 0; i < count; ++i) {
      entries.emplace_back(&fake().live(keys[i]), &fake().live(values[i]));
      fake().retain(*entries.back().first);
      fake().retain(*entries.back().second);
    }
    return reference<CFDictionaryRef>(fake().makeDictionary(std::move(entries)));
  };
  api_.CFDictionaryGetCount = [](CFDictionaryRef dictionary) {
    return static_cast<CFIndex>(fake().live(dictionary, FakeKind::dictionary).entries.size());
  };
  api_.CFDictionaryGetKeysAndValues = [](CFDictionaryRef dictionary, const void** keys,
                                         const void** values) {
    std::size_t i = 0;
    for (const auto& [key, value] : fake().live(dictionary, FakeKind::dictionary).entries) {
      keys[i] = key;
      values[i++] = value;
    }
  };
  api_.CFDictionaryGetTypeID = [] { return typeId(FakeKind::dictionary); };
}

void FakeCoreFoundation::fillScalars() {
  api_.kCFBooleanTrue = &true_;
  api_.kCFBooleanFalse = &false_;
  api_.CFBooleanGetValue = [](CFBooleanRef boolean) -> Boolean {
    return fake().live(boolean, FakeKind::boolean).text == "true" ? 1 : 0;
  };
  api_.CFBooleanGetTypeID = [] { return typeId(FakeKind::boolean); };
  api_.CFNumberCreate = [](CFAllocatorRef, CFNumberType type, const void* value) -> CFNumberRef {
    if (fake().fails("CFNumberCreate")) return nullptr;
    if (type == kCFNumberSInt64Type) {
      return reference<CFNumberRef>(fake().makeNumber(*static_cast<const std::int64_t*>(value)));
    }
    EXPECT_EQ(type, kCFNumberFloat64Type);
    return reference<CFNumberRef>(fake().makeNumber(*static_cast<const double*>(value)));
  };
  api_.CFNumberIsFloatType = [](CFNumberRef number) -> Boolean {
    return std::holds_alternative<double>(fake().live(number, FakeKind::number).number) ? 1 : 0;
  };
  api_.CFNumberGetValue = [](CFNumberRef number, CFNumberType type, void* value) -> Boolean {
    const FakeObject& object = fake().live(number, FakeKind::number);
    const double real = std::visit([](auto n) { return static_cast<double>(n); }, object.number);
    if (type == kCFNumberFloat64Type) {
      *static_cast<double*>(value) = object.unsignedBeyond ? 0x1p63 : real;
      return 1;
    }
    EXPECT_EQ(type, kCFNumberSInt64Type);
    const auto* whole = std::get_if<std::int64_t>(&object.number);
    *static_cast<std::int64_t*>(value) = whole != nullptr ? *whole : 0;
    return whole != nullptr && !object.unsignedBeyond ? 1 : 0;
  };
  api_.CFNumberGetTypeID = [] { return typeId(FakeKind::number); };
  api_.CFStringCreateWithBytes = [](CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean external) -> CFStringRef {
    EXPECT_EQ(encoding, kCFStringEncodingUTF8);
    EXPECT_EQ(external, 0);
    EXPECT_NE(bytes, nullptr);
    std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    if (fake().fails("CFStringCreateWithBytes") || !isUtf8(text)) return nullptr;
    return reference<CFStringRef>(fake().make(FakeKind::string, std::move(text)));
  };
  api_.CFStringGetLength = [](CFStringRef text) {
    return utf16Length(fake().live(text, FakeKind::string).text);
  };
  api_.CFStringGetMaximumSizeForEncoding = [](CFIndex length, CFStringEncoding) {
    return length * 3;
  };
  api_.CFStringGetBytes = [](CFStringRef text, CFRange range, CFStringEncoding encoding, UInt8 loss,
                             Boolean, UInt8* buffer, CFIndex size, CFIndex* used) {
    const std::string& bytes = fake().live(text, FakeKind::string).text;
    EXPECT_EQ(range.location, 0);
    EXPECT_EQ(range.length, utf16Length(bytes));
    EXPECT_EQ(encoding, kCFStringEncodingUTF8);
    EXPECT_NE(loss, 0) << "the conversion would stop at the first lone surrogate";
    EXPECT_GE(size, static_cast<CFIndex>(bytes.size()));
    std::copy(bytes.begin(), bytes.end(), buffer);
    *used = static_cast<CFIndex>(bytes.size());
    return range.length;
  };
  api_.CFStringGetTypeID = [] { return typeId(FakeKind::string); };
  api_.CFDataGetBytePtr = [](CFDataRef data) {
    return reinterpret_cast<const UInt8*>(fake().live(data, FakeKind::data).text.data());
  };
  api_.CFDataGetLength = [](CFDataRef data) {
    return static_cast<CFIndex>(fake().live(data, FakeKind::data).text.size());
  };
  api_.CFDataGetTypeID = [] { return typeId(FakeKind::data); };
}

void FakeCoreFoundation::fillLoops() {
  api_.kCFRunLoopCommonModes = &commonModes_;
  api_.kCFRunLoopDefaultMode = &defaultMode_;
  api_.CFRunLoopGetMain = [] {
    return static_cast<CFRunLoopRef>(static_cast<void*>(&fake().loop_));
  };
  api_.CFRunLoopAddSource = [](CFRunLoopRef loop, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    EXPECT_EQ(static_cast<void*>(loop), &fake().loop_);
    EXPECT_EQ(mode, fake().commonModes_) << "menus and alerts would stop the source";
    FakeObject& added = fake().live(source, FakeKind::source);
    fake().retain(added);
    fake().loopSources.push_back(&added);
    fake().calls.emplace_back("CFRunLoopAddSource");
  };
  api_.CFRunLoopRemoveSource = [](CFRunLoopRef loop, CFRunLoopSourceRef source,
                                  CFRunLoopMode mode) {
    EXPECT_EQ(static_cast<void*>(loop), &fake().loop_);
    EXPECT_EQ(mode, fake().commonModes_);
    FakeObject& removed = fake().live(source, FakeKind::source);
    EXPECT_EQ(std::erase(fake().loopSources, static_cast<const void*>(&removed)), 1U);
    fake().calls.emplace_back("CFRunLoopRemoveSource");
    fake().release(removed);
  };
  api_.CFRunLoopRunInMode = [](CFRunLoopMode, CFTimeInterval, Boolean) {
    fake().calls.emplace_back("CFRunLoopRunInMode");
    return kCFRunLoopRunTimedOut;
  };
  api_.CFMachPortCreateRunLoopSource = [](CFAllocatorRef, CFMachPortRef port,
                                          CFIndex order) -> CFRunLoopSourceRef {
    static_cast<void>(fake().live(port, FakeKind::machPort));
    EXPECT_EQ(order, 0);
    if (fake().fails("CFMachPortCreateRunLoopSource")) return nullptr;
    return static_cast<CFRunLoopSourceRef>(static_cast<void*>(&fake().make(FakeKind::source)));
  };
  api_.CFMachPortInvalidate = [](CFMachPortRef port) {
    fake().live(port, FakeKind::machPort).text = "invalid";
    fake().calls.emplace_back("CFMachPortInvalidate");
  };
}

void FakeCoreFoundation::fillPreferences() {
  api_.kCFPreferencesCurrentUser = &currentUser_;
  api_.kCFPreferencesAnyHost = &anyHost_;
  const auto here = [](CFStringRef user, CFStringRef host) {
    EXPECT_EQ(user, fake().currentUser_);
    EXPECT_EQ(host, fake().anyHost_);
  };
  static const auto checkPlace = here;
  api_.CFPreferencesCopyAppValue = [](CFStringRef key,
                                      CFStringRef application) -> CFPropertyListRef {
    const FakeObject* value = fake().preferred(fake().live(application, FakeKind::string).text,
                                               fake().live(key, FakeKind::string).text);
    if (value == nullptr) return nullptr;
    fake().retain(*value);
    return value;
  };
  api_.CFPreferencesCopyMultiple = [](CFArrayRef keys, CFStringRef application, CFStringRef user,
                                      CFStringRef host) -> CFDictionaryRef {
    EXPECT_EQ(keys, nullptr) << "only null means all keys";
    checkPlace(user, host);
    const std::string domain = fake().live(application, FakeKind::string).text;
    if (fake().fails("CFPreferencesCopyMultiple")) return nullptr;
    FakeEntries entries;
    for (const auto& [key, value] : fake().preferences_[domain]) {
      fake().retain(*value);
      entries.emplace_back(&fake().make(FakeKind::string, key), value);
    }
    return reference<CFDictionaryRef>(fake().makeDictionary(std::move(entries)));
  };
  api_.CFPreferencesSetMultiple = [](CFDictionaryRef set, CFArrayRef removed,
                                     CFStringRef application, CFStringRef user, CFStringRef host) {
    checkPlace(user, host);
    const std::string domain = fake().live(application, FakeKind::string).text;
    fake().calls.emplace_back("CFPreferencesSetMultiple");
    for (const auto& [key, value] : fake().live(set, FakeKind::dictionary).entries) {
      fake().retain(*value);
      fake().preferSet(domain, key->text, *value);
    }
    for (const FakeObject* key : fake().live(removed, FakeKind::array).elements) {
      fake().preferRemove(domain, key->text);
    }
  };
  api_.CFPreferencesSynchronize = [](CFStringRef application, CFStringRef user,
                                     CFStringRef host) -> Boolean {
    checkPlace(user, host);
    static_cast<void>(fake().live(application, FakeKind::string));
    return fake().fails("CFPreferencesSynchronize") ? 0 : 1;
  };
}

void FakeCoreFoundation::fillCenters() {
  api_.CFNotificationCenterGetDistributedCenter = [] {
    return static_cast<CFNotificationCenterRef>(static_cast<void*>(&fake().center_));
  };
  api_.CFNotificationCenterAddObserver =
      [](CFNotificationCenterRef center, const void* observer, CFNotificationCallback callback,
         CFStringRef name, const void*, CFNotificationSuspensionBehavior suspension) {
        EXPECT_EQ(static_cast<void*>(center), &fake().center_);
        EXPECT_EQ(suspension, CFNotificationSuspensionBehaviorDeliverImmediately);
        fake().observers_.push_back({observer, callback, fake().live(name, FakeKind::string).text});
      };
  api_.CFNotificationCenterRemoveEveryObserver = [](CFNotificationCenterRef, const void* observer) {
    EXPECT_EQ(std::erase_if(fake().observers_,
                            [observer](const Observer& o) { return o.observer == observer; }),
              1U);
  };
}

}  // namespace velotap::test
