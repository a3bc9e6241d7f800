#include "adapters/macos/preferences/cf_preferences_storage.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_runtime.hpp"

namespace velotap::test {
namespace {

constexpr const char* kDomain = "app.norwend.velotap";

class CfPreferencesStorageTest : public ::testing::Test {
 protected:
  void anotherSets(const std::string& key, const FakeObject& value) {
    cf_.preferSet(kDomain, key, value);
    changes_.tell(kDomain);
    dispatch_.runReady();
  }

  FakeCoreFoundation cf_;
  FakeDispatch dispatch_;
  DispatchMainQueue queue_{dispatch_.api()};
  FakeChanges changes_;
  CfPreferencesStorage storage_{cf_.api(), changes_, queue_, {"enabled", "maxTapDrift"}};
};

TEST_F(CfPreferencesStorageTest, whatOthersKeepInTheDomainIsLeftAlone) {
  cf_.preferSet(kDomain, "SULastCheckTime", cf_.make(FakeKind::date));
  EXPECT_TRUE(storage_.load(kDomain).empty());
  EXPECT_TRUE(storage_.store(kDomain, {{"enabled", false}}));
  EXPECT_TRUE(storage_.store(kDomain, {}));
  EXPECT_NE(cf_.preferred(kDomain, "SULastCheckTime"), nullptr);
  EXPECT_EQ(cf_.preferredCount(kDomain), 1U);
}

TEST_F(CfPreferencesStorageTest, aKeyThatAppearedBehindOurBackIsNotRemoved) {
  EXPECT_TRUE(storage_.store(kDomain, {{"enabled", false}}));
  cf_.preferSet(kDomain, "NSWindow Frame settings", cf_.make(FakeKind::string, "0 0"));
  EXPECT_TRUE(storage_.store(kDomain, {{"enabled", true}}));
  EXPECT_NE(cf_.preferred(kDomain, "NSWindow Frame settings"), nullptr);
}

TEST_F(CfPreferencesStorageTest, nothingIsWrittenWhereNothingDiffers) {
  const ValueMap values = {{"enabled", false}};
  EXPECT_TRUE(storage_.store(kDomain, values));
  cf_.calls.clear();
  EXPECT_TRUE(storage_.store(kDomain, values));
  EXPECT_TRUE(cf_.calls.empty() || std::find(cf_.calls.begin(), cf_.calls.end(),
                                             "CFPreferencesSetMultiple") == cf_.calls.end());
}

TEST_F(CfPreferencesStorageTest, aFailedWriteIsTakenBackFromTheServiceToo) {
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 1}, {"gone", 2}}));
  cf_.fail("CFPreferencesSynchronize");
  EXPECT_FALSE(storage_.store(kDomain, {{"a", 3}, {"new", 4}}));
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 1}, {"gone", 2}}));
}

TEST_F(CfPreferencesStorageTest, whatCannotBeWrittenAsTextChangesNothing) {
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 1}}));
  EXPECT_FALSE(storage_.store(kDomain, {{"a", "\xff"}}));
  EXPECT_FALSE(storage_.store("\xff", {{"a", 1}}));
  EXPECT_EQ(storage_.load(kDomain), (ValueMap{{"a", 1}}));
  EXPECT_TRUE(storage_.load("\xff").empty());
}

TEST_F(CfPreferencesStorageTest, whatCannotBeMadeIsNotStoredByHalf) {
  const ValueMap before = {{"kept", true}};
  EXPECT_TRUE(storage_.store(kDomain, before));
  const ValueMap after = {{"kept", false},
                          {"whole", 1},
                          {"real", 0.5},
                          {"text", "x"},
                          {"list", Value::strings({"a", "b"})},
                          {"map", ValueMap{{"inner", 2}}}};
  for (const char* function :
       {"CFNumberCreate", "CFStringCreateWithBytes", "CFArrayCreate", "CFDictionaryCreate"}) {
    cf_.fail(function);
    EXPECT_FALSE(storage_.store(kDomain, after)) << function;
    cf_.succeed(function);
    EXPECT_EQ(storage_.load(kDomain), before) << function;
  }
  EXPECT_TRUE(storage_.store(kDomain, after));
  EXPECT_EQ(storage_.load(kDomain), after);
}

TEST_F(CfPreferencesStorageTest, aDomainThatCannotBeReadIsEmpty) {
  EXPECT_TRUE(storage_.store(kDomain, {{"a", 1}}));
  cf_.fail("CFPreferencesCopyMultiple");
  EXPECT_TRUE(storage_.load(kDomain).empty());
}

TEST_F(CfPreferencesStorageTest, theKeysOfTheProgramAndTheStoredOnesAreWatched) {
  cf_.preferSet(
      kDomain, "conflictWarned.padTap3", *[&] {
        cf_.retain(cf_.live(*cf_.api().kCFBooleanTrue));
        return &cf_.live(*cf_.api().kCFBooleanTrue);
      }());
  cf_.preferSet(kDomain, "enabled", cf_.makeNumber(std::int64_t{1}));
  const Observation first = storage_.observe(kDomain, [] {});
  const Observation second = storage_.observe(kDomain, [] {});
  EXPECT_EQ(changes_.watched.at(kDomain),
            (std::vector<std::string>{"enabled", "maxTapDrift", "conflictWarned.padTap3"}));
}

TEST_F(CfPreferencesStorageTest, oneChangeToldKeyByKeyIsHeardOnce) {
  int heard = 0;
  const Observation watching = storage_.observe(kDomain, [&] { ++heard; });
  cf_.preferSet(kDomain, "enabled", cf_.makeNumber(std::int64_t{0}));
  changes_.tell(kDomain);
  changes_.tell(kDomain);
  EXPECT_EQ(heard, 0) << "told on any thread, heard on the main one";
  dispatch_.runReady();
  EXPECT_EQ(heard, 1);
  anotherSets("enabled", cf_.makeNumber(std::int64_t{1}));
  EXPECT_EQ(heard, 2);
}

TEST_F(CfPreferencesStorageTest, theSystemsEchoOfOurOwnWritingIsNotHeard) {
  int heard = 0;
  const Observation watching = storage_.observe(kDomain, [&] { ++heard; });
  EXPECT_TRUE(storage_.store(kDomain, {{"enabled", false}}));
  changes_.tell(kDomain);
  dispatch_.runReady();
  EXPECT_EQ(heard, 0);
}

TEST_F(CfPreferencesStorageTest, recheckingFindsWhatTheSystemCannotTellOf) {
  int heard = 0;
  const Observation watching = storage_.observe(kDomain, [&] { ++heard; });
  storage_.recheck();
  EXPECT_EQ(heard, 0);
  cf_.preferSet(kDomain, "settings.gestureDevice", cf_.make(FakeKind::string, "mouse"));
  storage_.recheck();
  EXPECT_EQ(heard, 1);
}

TEST_F(CfPreferencesStorageTest, aChangeThatArrivesAfterTheEndIsNobodys) {
  {
    CfPreferencesStorage gone(cf_.api(), changes_, queue_, {});
    const Observation watching = gone.observe(kDomain, [] { FAIL(); });
    cf_.preferSet(kDomain, "enabled", cf_.makeNumber(std::int64_t{0}));
    changes_.tell(kDomain);
  }
  dispatch_.runReady();
}

}  // namespace
}  // namespace velotap::test
