#include "config/defaults_store.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/fake_ports.hpp"

namespace velotap {
namespace {

using std::string_literals::operator""s;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const std::string kDomain(kSettingsDomain);

class DefaultsStoreTest : public ::testing::Test {
 protected:
  ValueMap& onDisk() { return storage_.domains[kDomain]; }
  void writeAsAnother(const ValueMap& values) {
    onDisk() = values;
    storage_.changes.notify();
  }

  test::MemoryPreferences storage_;
  test::RecordingLog log_;
};

TEST_F(DefaultsStoreTest, readsWhatWasStoredBefore) {
  onDisk() = {{"a", 1}, {"b", "two"}};
  const DefaultsStore store(storage_, log_);
  EXPECT_EQ(store.object("a"), Value(1));
  EXPECT_EQ(store.object("b"), Value("two"));
  EXPECT_FALSE(store.object("c"));
  EXPECT_FALSE(store.object(""));
}

TEST_F(DefaultsStoreTest, readsItsOwnDomainOnly) {
  storage_.domains["other"] = {{"a", 1}};
  EXPECT_FALSE(DefaultsStore(storage_, log_).object("a"));
  EXPECT_EQ(DefaultsStore(storage_, log_, "other").object("a"), Value(1));
}

TEST_F(DefaultsStoreTest, storedValuesLieOverRegisteredOnes) {
  DefaultsStore store(storage_, log_);
  store.registerDefaults({{"a", 1}, {"b", 2}});
  store.set("a", 10);
  EXPECT_EQ(store.object("a"), Value(10));
  EXPECT_EQ(store.object("b"), Value(2));
  store.remove("a");
  EXPECT_EQ(store.object("a"), Value(1));
}

TEST_F(DefaultsStoreTest, registeredValuesAreNeverWrittenAndLaterOnesReplaceEarlierOnes) {
  DefaultsStore store(storage_, log_);
  store.registerDefaults({{"a", 1}, {"b", 2}});
  store.registerDefaults({{"b", 3}, {"c", 4}});
  EXPECT_EQ(store.object("a"), Value(1));
  EXPECT_EQ(store.object("b"), Value(3));
  EXPECT_EQ(store.object("c"), Value(4));
  store.set("d", 5);
  EXPECT_EQ(onDisk(), (ValueMap{{"d", 5}}));
}

TEST_F(DefaultsStoreTest, typesAreKept) {
  DefaultsStore store(storage_, log_);
  for (const Value& value :
       {Value(true), Value(1), Value(1.0), Value("1"), Value(ValueArray{Value(1), Value("x")}),
        Value(ValueMap{{"k", Value(false)}})}) {
    EXPECT_TRUE(store.set("key", value));
    EXPECT_EQ(store.object("key"), value);
    EXPECT_EQ(onDisk().at("key"), value);
  }
  EXPECT_FALSE(Value(1) == Value(1.0)) << "an integer is no real";
  EXPECT_FALSE(Value(1) == Value(true)) << "nor a boolean";
}

TEST_F(DefaultsStoreTest, keysItDoesNotKnowAreKept) {
  onDisk() = {{"future", ValueMap{{"a", 1}}}, {"enabled", true}};
  DefaultsStore store(storage_, log_);
  store.set("enabled", false);
  EXPECT_EQ(onDisk(), (ValueMap{{"future", ValueMap{{"a", 1}}}, {"enabled", false}}));
}

TEST_F(DefaultsStoreTest, booleanReadings) {
  struct Row {
    Value value;
    bool reads;
  };
  const Row rows[] = {
      {true, true},
      {false, false},
      {1, true},
      {0, false},
      {-1, true},
      {2, true},
      {0.0, false},
      {-0.0, false},
      {1e-300, true},
      {kInfinity, true},
      {"YES", true},
      {"yes", true},
      {"Y", true},
      {"NO", false},
      {"n", false},
      {"true", true},
      {"True", true},
      {"t", true},
      {"false", false},
      {"1", true},
      {"0", false},
      {"00", false},
      {"007", true},
      {"-1", true},
      {"+3", true},
      {"-0", false},
      {"--1", false},
      {"  \t\r\n1", true},
      {" yes", true},
      {"", false},
      {"   ", false},
      {"+", false},
      {"0.5", false},
      {"on", false},
      {"ja", false},
      {"9 lives", true},
      {"\0yes"s, false},
      {ValueArray(), false},
      {ValueArray{Value(true)}, false},
      {ValueMap(), false},
      {ValueMap{{"a", Value(true)}}, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(booleanReading(row.value), row.reads)
        << (row.value.text() != nullptr ? *row.value.text() : "no text");
    onDisk() = {{"key", row.value}};
    EXPECT_EQ(DefaultsStore(storage_, log_).boolean("key"), row.reads);
  }
}

TEST_F(DefaultsStoreTest, anAbsentBooleanIsTheRegisteredOneElseFalse) {
  DefaultsStore store(storage_, log_);
  EXPECT_FALSE(store.boolean("key"));
  store.registerDefaults({{"key", true}});
  EXPECT_TRUE(store.boolean("key"));
  store.set("key", "junk");
  EXPECT_FALSE(store.boolean("key")) << "stored junk is not skipped";
}

TEST_F(DefaultsStoreTest, textIsOnlyText) {
  DefaultsStore store(storage_, log_);
  EXPECT_FALSE(store.text("key"));
  for (const Value& other : {Value(true), Value(1), Value(0.5), Value(ValueArray())}) {
    store.set("key", other);
    EXPECT_FALSE(store.text("key"));
  }
  store.set("key", "");
  EXPECT_EQ(store.text("key"), "");
  store.set("key", "mouse");
  EXPECT_EQ(store.text("key"), "mouse");
}

TEST_F(DefaultsStoreTest, textsAreAnArrayOfNothingButTexts) {
  DefaultsStore store(storage_, log_);
  EXPECT_TRUE(store.texts("key").empty());
  store.set("key", Value::strings({"a", "", "a"}));
  EXPECT_EQ(store.texts("key"), (std::vector<std::string>{"a", "", "a"}));
  for (const Value& other :
       {Value("a"), Value(ValueArray{Value("a"), Value(true)}), Value(ValueMap()), Value(1)}) {
    store.set("key", other);
    EXPECT_TRUE(store.texts("key").empty());
  }
}

TEST_F(DefaultsStoreTest, everyChangeIsAnnouncedOnceItIsInForce) {
  DefaultsStore store(storage_, log_);
  std::vector<std::optional<Value>> seen;
  const Observation watching = store.observeChanges([&] { seen.push_back(store.object("key")); });
  store.set("key", 1);
  store.set("key", 1);
  store.remove("key");
  store.registerDefaults({{"key", 7}});
  writeAsAnother({{"key", 2}});
  EXPECT_EQ(seen, (std::vector<std::optional<Value>>{Value(1), Value(1), std::nullopt, Value(7),
                                                     Value(2)}));
}

TEST_F(DefaultsStoreTest, anObserverThatWithdrewHearsNothing) {
  DefaultsStore store(storage_, log_);
  int heard = 0;
  Observation watching = store.observeChanges([&] { ++heard; });
  watching.reset();
  store.set("key", 1);
  EXPECT_EQ(heard, 0);
}

TEST_F(DefaultsStoreTest, anObserverMayWrite) {
  DefaultsStore store(storage_, log_);
  const Observation watching = store.observeChanges([&] {
    if (!store.object("echo")) store.set("echo", *store.object("key"));
  });
  store.set("key", 1);
  EXPECT_EQ(onDisk(), (ValueMap{{"key", 1}, {"echo", 1}}));
}

TEST_F(DefaultsStoreTest, afterItsEndOtherWritersReachNobody) {
  { const DefaultsStore store(storage_, log_); }
  writeAsAnother({{"key", 1}});
}

TEST_F(DefaultsStoreTest, whatCouldNotBeWrittenStaysInForceAndIsSaidOnce) {
  onDisk() = {{"old", 1}};
  DefaultsStore store(storage_, log_);
  storage_.refuses = true;
  EXPECT_FALSE(store.set("new", 2));
  EXPECT_EQ(store.object("new"), Value(2));
  EXPECT_EQ(onDisk(), (ValueMap{{"old", 1}}));
  EXPECT_EQ(log_.take(), std::vector<std::string>{"settings could not be written"});
  EXPECT_FALSE(store.remove("old"));
  EXPECT_FALSE(store.object("old"));
  EXPECT_EQ(log_.take().size(), 1U);
}

TEST_F(DefaultsStoreTest, nothingIsSaidToALogThatNobodyAskedFor) {
  DefaultsStore store(storage_, log_);
  log_.on = false;
  storage_.refuses = true;
  EXPECT_FALSE(store.set("new", 2));
  EXPECT_TRUE(log_.take().empty());
}

TEST_F(DefaultsStoreTest, whatCouldNotBeWrittenGoesWithTheNextValue) {
  onDisk() = {{"old", 1}};
  DefaultsStore store(storage_, log_);
  storage_.refuses = true;
  store.set("a", 1);
  store.remove("old");
  storage_.refuses = false;
  EXPECT_TRUE(store.set("b", 2));
  EXPECT_EQ(onDisk(), (ValueMap{{"a", 1}, {"b", 2}}));
}

TEST_F(DefaultsStoreTest, whatCouldNotBeWrittenOutlivesAnotherWritersChange) {
  DefaultsStore store(storage_, log_);
  storage_.refuses = true;
  store.set("a", 1);
  store.remove("b");
  writeAsAnother({{"a", 10}, {"b", 20}, {"c", 30}});
  EXPECT_EQ(store.object("a"), Value(1));
  EXPECT_FALSE(store.object("b"));
  EXPECT_EQ(store.object("c"), Value(30));
  storage_.refuses = false;
  store.set("d", 4);
  EXPECT_EQ(onDisk(), (ValueMap{{"a", 1}, {"c", 30}, {"d", 4}}));
  writeAsAnother({{"a", 11}});
  EXPECT_EQ(store.object("a"), Value(11)) << "written by now, so nothing is held against it";
}

TEST_F(DefaultsStoreTest, theLatestOfSeveralUnwrittenValuesCounts) {
  DefaultsStore store(storage_, log_);
  storage_.refuses = true;
  store.set("a", 1);
  store.remove("a");
  store.set("a", 3);
  writeAsAnother({{"a", 10}});
  EXPECT_EQ(store.object("a"), Value(3));
}

/// A storage that hears of another writer while it stores, as one of files may.
class InterruptedPreferences final : public PreferencesStorage {
 public:
  ValueMap values;
  bool refuses = false;
  std::function<void()> meanwhile;
  [[nodiscard]] ValueMap load(std::string_view) override { return values; }
  bool store(std::string_view, const ValueMap& written) override {
    const bool accepted = !refuses;
    if (accepted) values = written;
    if (auto task = std::exchange(meanwhile, nullptr)) task();
    return accepted;
  }
  [[nodiscard]] Observation observe(std::string_view, std::function<void()> changed) override {
    return changes.add(std::move(changed));
  }
  ObserverList<> changes;
};

TEST_F(DefaultsStoreTest, aWriteWithinAWriteIsNotForgotten) {
  InterruptedPreferences storage;
  DefaultsStore store(storage, log_);
  storage.meanwhile = [&] {
    storage.refuses = true;
    EXPECT_FALSE(store.set("inner", 2));
  };
  EXPECT_TRUE(store.set("outer", 1));
  EXPECT_EQ(storage.values, (ValueMap{{"outer", 1}}));
  storage.changes.notify();
  EXPECT_EQ(store.object("inner"), Value(2)) << "still unwritten, still in force";
  storage.refuses = false;
  store.set("more", 3);
  EXPECT_EQ(storage.values, (ValueMap{{"outer", 1}, {"inner", 2}, {"more", 3}}));
}

TEST_F(DefaultsStoreTest, whatNoStorageCanHoldIsRefused) {
  DefaultsStore store(storage_, log_);
  store.set("key", 1);
  int heard = 0;
  const Observation watching = store.observeChanges([&] { ++heard; });
  for (const Value& wrong :
       {Value(kNaN), Value(kInfinity), Value(-kInfinity), Value("\xFF"),
        Value(ValueArray{Value(1), Value(kNaN)}), Value(ValueArray{Value("\xC3")}),
        Value(ValueMap{{"a", Value(ValueArray{Value(kInfinity)})}}),
        Value(ValueMap{{"\xFF", Value(1)}})}) {
    EXPECT_FALSE(isStorable(wrong));
    EXPECT_FALSE(store.set("key", wrong));
    EXPECT_EQ(store.object("key"), Value(1));
    EXPECT_EQ(log_.take().size(), 1U);
  }
  EXPECT_FALSE(store.set("\xFF", 1));
  EXPECT_EQ(heard, 0);
  EXPECT_EQ(onDisk(), (ValueMap{{"key", 1}}));
}

TEST_F(DefaultsStoreTest, whatEveryStorageCanHold) {
  for (const Value& fine :
       {Value(true), Value(INT64_MIN), Value(-0.0), Value(std::numeric_limits<double>::max()),
        Value(std::numeric_limits<double>::denorm_min()), Value(""), Value("\0"s), Value("é😀"),
        Value(ValueArray()), Value(ValueMap{{"", Value(ValueMap())}})}) {
    EXPECT_TRUE(isStorable(fine));
  }
}

}  // namespace
}  // namespace velotap
