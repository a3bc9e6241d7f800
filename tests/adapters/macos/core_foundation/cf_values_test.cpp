#include "adapters/macos/core_foundation/cf_values.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {
namespace {

class CfValuesTest : public ::testing::Test {
 protected:
  std::optional<Value> there(const Value& value) {
    const auto object = cfValue(cf_, value);
    return object ? valueOf(cf_, object.get()) : std::nullopt;
  }

  FakeCoreFoundation fake_;
  const CoreFoundationApi& cf_ = fake_.api();
};

TEST_F(CfValuesTest, everyTypeComesBackAsItself) {
  const ValueMap values = {{"no", false},
                           {"yes", true},
                           {"whole", std::numeric_limits<std::int64_t>::min()},
                           {"most", std::numeric_limits<std::int64_t>::max()},
                           {"real", 1.0},
                           {"endless", std::numeric_limits<double>::infinity()},
                           {"text", "K\u00f6ln \U0001F600"},
                           {"empty", ""},
                           {"list", ValueArray{1, "two", ValueArray()}},
                           {"map", ValueMap{{"inner", ValueMap()}}}};
  EXPECT_EQ(there(values), Value(values));
}

TEST_F(CfValuesTest, aTextKeepsItsZeroBytes) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(there(text), Value(text));
}

TEST_F(CfValuesTest, whatIsNoUtf8IsRefusedAsKeyTextOrElement) {
  EXPECT_FALSE(cfText(cf_, "\xff"));
  EXPECT_FALSE(cfValue(cf_, "\xc3"));
  EXPECT_FALSE(cfValue(cf_, ValueArray{1, "\xff"}));
  EXPECT_FALSE(cfDictionary(cf_, {{"fine", 1}, {"\xff", 1}}));
  EXPECT_FALSE(cfDictionary(cf_, {{"fine", ValueMap{{"inner", "\xff"}}}}));
}

TEST_F(CfValuesTest, nothingLeaksWhenTheFrameworkRunsOutOfMemory) {
  const ValueMap values = {{"a", ValueArray{1, "x"}}, {"b", ValueMap{{"c", 1.5}}}};
  for (const char* function :
       {"CFArrayCreate", "CFDictionaryCreate", "CFNumberCreate", "CFStringCreateWithBytes"}) {
    fake_.fail(function);
    EXPECT_FALSE(cfValue(cf_, values)) << function;
    fake_.succeed(function);
  }
}

TEST_F(CfValuesTest, aWholeNumberBeyondSixtyFourBitsIsTheNearestReal) {
  FakeObject& number = fake_.makeNumber(std::int64_t{-1});
  number.unsignedBeyond = true;
  EXPECT_EQ(valueOf(cf_, &number), Value(0x1p63));
  fake_.release(number);
}

TEST_F(CfValuesTest, whatSettingsCannotHoldHasNoValueNorHasWhatHoldsIt) {
  FakeObject& date = fake_.make(FakeKind::date);
  EXPECT_EQ(valueOf(cf_, &date), std::nullopt);
  FakeObject& list = fake_.makeArray({&date});
  EXPECT_EQ(valueOf(cf_, &list), std::nullopt);
  FakeObject& map = fake_.makeDictionary({{&fake_.make(FakeKind::string, "key"), &list}});
  EXPECT_EQ(valueOf(cf_, &map), std::nullopt);
  fake_.release(map);
}

TEST_F(CfValuesTest, entriesWithoutAValueOrATextAsKeyAreLeftOut) {
  FakeObject& map = fake_.makeDictionary(
      {{&fake_.make(FakeKind::string, "date"), &fake_.make(FakeKind::date)},
       {&fake_.makeNumber(std::int64_t{7}), &fake_.make(FakeKind::string, "seven")},
       {&fake_.make(FakeKind::string, "text"), &fake_.make(FakeKind::string, "value")}});
  const auto dictionary = static_cast<CFDictionaryRef>(static_cast<void*>(&map));
  EXPECT_EQ(entriesOf(cf_, dictionary), (ValueMap{{"text", "value"}}));
  EXPECT_EQ(valueOf(cf_, &map), std::nullopt);
  fake_.release(map);
}

// 64 collections in each other are read, 65 are not.
TEST_F(CfValuesTest, nestingIsFollowedToItsLimit) {
  const auto nested = [](int levels) {
    Value value = 1;
    for (int i = 0; i < levels; ++i) value = ValueArray{value};
    return value;
  };
  EXPECT_EQ(there(nested(64)), nested(64));
  EXPECT_EQ(there(nested(65)), std::nullopt);
}

TEST_F(CfValuesTest, referencesMoveAndAreReleasedOnce) {
  CfRef<CFStringRef> first = cfText(cf_, "first");
  CfRef<CFStringRef> second = cfText(cf_, "second");
  second = std::move(first);
  EXPECT_TRUE(second);
  EXPECT_EQ(textOf(cf_, second.get()), "first");
  second.reset();
  second.reset();
  EXPECT_FALSE(second);
}

}  // namespace
}  // namespace velotap::test
