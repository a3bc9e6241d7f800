#include "config/defaults_store.hpp"

#include <gtest/gtest.h>

#include "adapters/simulated/simulated_log.hpp"
#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {
namespace {

class DefaultsStoreTest : public testing::Test {
 protected:
  SimulatedPreferences preferences_;
  SimulatedLog log_;
  DefaultsStore store_{preferences_, log_};
};

TEST_F(DefaultsStoreTest, storedValuesLieOverRegisteredOnes) {
  EXPECT_FALSE(store_.object("key"));
  store_.registerDefaults({{"key", 1}});
  EXPECT_EQ(store_.object("key"), Value(1));
  store_.set("key", 2);
  EXPECT_EQ(store_.object("key"), Value(2));
  store_.remove("key");
  EXPECT_EQ(store_.object("key"), Value(1));
}

TEST_F(DefaultsStoreTest, onlyStoredValuesReachTheStorage) {
  store_.registerDefaults({{"key", 1}});
  store_.set("other", "text");
  EXPECT_EQ(preferences_.load(kSettingsDomain), (ValueMap{{"other", "text"}}));
}

TEST_F(DefaultsStoreTest, whatWasStoredBeforeIsThere) {
  store_.set("key", true);
  const DefaultsStore second(preferences_, log_);
  EXPECT_EQ(second.object("key"), Value(true));
}

TEST(BooleanReading, takesEveryUsualForm) {
  for (const Value& yes : {Value(true), Value(1), Value(-3), Value(0.5), Value("YES"), Value("yes"),
                           Value("true"), Value("T"), Value("1"), Value(" 007"), Value("-2")}) {
    EXPECT_TRUE(booleanReading(yes));
  }
  for (const Value& no :
       {Value(false), Value(0), Value(0.0), Value("NO"), Value("false"), Value("0"), Value(""),
        Value("   "), Value("000"), Value("on"), Value(ValueArray{true}), Value(ValueMap())}) {
    EXPECT_FALSE(booleanReading(no));
  }
}

TEST_F(DefaultsStoreTest, typedLookUpsRefuseOtherTypes) {
  store_.set("n", 1);
  store_.set("list", ValueArray{"a", 1});
  EXPECT_FALSE(store_.text("n"));
  EXPECT_TRUE(store_.texts("n").empty());
  EXPECT_TRUE(store_.texts("list").empty()) << "not all of them are texts";
  store_.set("list", Value::strings({"a", "b"}));
  EXPECT_EQ(store_.texts("list"), (std::vector<std::string>{"a", "b"}));
  EXPECT_FALSE(store_.boolean("absent"));
}

TEST_F(DefaultsStoreTest, everyChangeIsAnnounced) {
  int changes = 0;
  const auto observation = store_.observeChanges([&] { ++changes; });
  store_.set("a", 1);
  store_.remove("a");
  preferences_.storeAsAnotherWriter(kSettingsDomain, {{"b", 2}});
  EXPECT_EQ(changes, 3);
  EXPECT_EQ(store_.object("b"), Value(2));
}

TEST_F(DefaultsStoreTest, whatCannotBeWrittenIsInForceAllTheSame) {
  preferences_.setReadOnly(true);
  EXPECT_FALSE(store_.set("key", 5));
  EXPECT_EQ(store_.object("key"), Value(5));
}

}  // namespace
}  // namespace velotap
