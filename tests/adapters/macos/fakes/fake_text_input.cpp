#include "fakes/fake_text_input.hpp"

#include <gtest/gtest.h>

namespace velotap::test {
namespace {

FakeTextInput* running = nullptr;

FakeTextInput& fake() {
  return FakeTextInput::current();
}

CFStringRef constant(FakeCoreFoundation& cf, const char* text) {
  return static_cast<CFStringRef>(static_cast<void*>(&cf.makeConstant(FakeKind::string, text)));
}

}  // namespace

FakeTextInput& FakeTextInput::current() {
  return *running;
}

FakeTextInput::FakeTextInput(FakeCoreFoundation& cf)
    : cf_(cf), property_(constant(cf, "key layout data")), changed_(constant(cf, kChanged)) {
  running = this;
  api_.kTISPropertyUnicodeKeyLayoutData = &property_;
  api_.kTISNotifySelectedKeyboardInputSourceChanged = &changed_;
  api_.TISCopyCurrentKeyboardLayoutInputSource = []() -> TISInputSourceRef {
    fake().assertMainThread();
    return fake().currentMissing ? nullptr : fake().source(fake().currentTable);
  };
  api_.TISCopyCurrentASCIICapableKeyboardLayoutInputSource = []() -> TISInputSourceRef {
    fake().assertMainThread();
    return fake().asciiMissing ? nullptr : fake().source(fake().asciiTable);
  };
  api_.TISGetInputSourceProperty = [](TISInputSourceRef source, CFStringRef key) -> void* {
    fake().assertMainThread();
    EXPECT_EQ(key, fake().property_);
    const FakeObject& object = fake().cf_.live(source, FakeKind::inputSource);
    return object.elements.empty() ? nullptr : const_cast<FakeObject*>(object.elements.front());
  };
  api_.LMGetKbdType = [] {
    fake().assertMainThread();
    return fake().keyboardType;
  };
  api_.UCKeyTranslate = [](const UCKeyboardLayout* layout, UInt16 key, UInt16 action,
                           UInt32 modifiers, UInt32 type, OptionBits options, UInt32* deadKeys,
                           UniCharCount size, UniCharCount* length, UniChar* text) -> OSStatus {
    ++fake().translations;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(layout) % alignof(std::uint64_t), 0U);
    EXPECT_EQ(action, 0) << "key down";
    EXPECT_EQ(modifiers, 1U) << "Command";
    EXPECT_EQ(type, fake().keyboardType);
    EXPECT_EQ(options, 0U);
    EXPECT_EQ(*deadKeys, 0U);
    EXPECT_EQ(size, 4U);
    *deadKeys = 7;  // a dead key leaves its mark, which must not reach the next call
    const Translation answer = fake().translate(reinterpret_cast<const char*>(layout), key);
    for (std::size_t i = 0; i < answer.units.size() && i < size; ++i) text[i] = answer.units[i];
    *length = answer.saysLength.value_or(answer.units.size());
    return answer.error;
  };
}

FakeTextInput::~FakeTextInput() {
  running = nullptr;
}

TISInputSourceRef FakeTextInput::source(const std::optional<std::string>& table) const {
  FakeObject& source = cf_.make(FakeKind::inputSource);
  if (table) {
    // With its terminator, so that a copy that is one byte short is noticed.
    const std::string bytes(table->c_str(), table->size() + 1);
    source.elements.push_back(&cf_.make(tableIsNoData ? FakeKind::string : FakeKind::data, bytes));
  }
  return static_cast<TISInputSourceRef>(static_cast<void*>(&source));
}

}  // namespace velotap::test
