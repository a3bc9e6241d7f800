// What every PreferencesStorage promises, whatever keeps the settings.
//
// A world makes one storage and can do what the storage's surroundings do: write as another
// program, let the storage hear of it, and keep writes from succeeding.
#pragma once

#include <gtest/gtest.h>

#include "platform/preferences_storage.hpp"

namespace velotap::test {

class PreferencesWorld {
 public:
  virtual ~PreferencesWorld() = default;
  [[nodiscard]] virtual PreferencesStorage& storage() = 0;
  /// The storage has heard of it when this returns.
  virtual void writeAsAnother(std::string_view domain, const ValueMap& values) = 0;
  virtual void setWritesFail(bool fail) = 0;
  /// Lets the storage hear of whatever happened.
  virtual void settle() = 0;
};

template <typename World>
class PreferencesContract : public ::testing::Test {
 protected:
  World world_;
  PreferencesStorage& storage_ = world_.storage();
};

TYPED_TEST_SUITE_P(PreferencesContract);

TYPED_TEST_P(PreferencesContract, anUnknownDomainIsEmpty) {
  EXPECT_TRUE(this->storage_.load("domain").empty());
}

TYPED_TEST_P(PreferencesContract, whatIsStoredIsLoadedWithItsTypes) {
  const ValueMap values = {{"boolean", true},
                           {"integer", 1},
                           {"real", 1.0},
                           {"text", "1"},
                           {"list", Value::strings({"b", "a", "b"})},
                           {"map", ValueMap{{"inner", ValueArray()}}}};
  EXPECT_TRUE(this->storage_.store("domain", values));
  EXPECT_EQ(this->storage_.load("domain"), values);
}

TYPED_TEST_P(PreferencesContract, storingReplacesWhatWasLoaded) {
  this->storage_.store("domain", {{"a", 1}, {"b", 2}});
  EXPECT_EQ(this->storage_.load("domain").size(), 2U);
  EXPECT_TRUE(this->storage_.store("domain", {{"b", 3}}));
  EXPECT_EQ(this->storage_.load("domain"), (ValueMap{{"b", 3}}));
  EXPECT_TRUE(this->storage_.store("domain", {}));
  EXPECT_TRUE(this->storage_.load("domain").empty());
}

TYPED_TEST_P(PreferencesContract, domainsAreApart) {
  this->storage_.store("one", {{"a", 1}});
  this->storage_.store("two", {{"a", 2}});
  EXPECT_EQ(this->storage_.load("one"), (ValueMap{{"a", 1}}));
  EXPECT_EQ(this->storage_.load("two"), (ValueMap{{"a", 2}}));
}

TYPED_TEST_P(PreferencesContract, aFailedWriteLeavesWhatWasThere) {
  this->storage_.store("domain", {{"a", 1}});
  this->world_.setWritesFail(true);
  EXPECT_FALSE(this->storage_.store("domain", {{"a", 2}}));
  EXPECT_EQ(this->storage_.load("domain"), (ValueMap{{"a", 1}}));
  this->world_.setWritesFail(false);
  EXPECT_TRUE(this->storage_.store("domain", {{"a", 3}}));
  EXPECT_EQ(this->storage_.load("domain"), (ValueMap{{"a", 3}}));
}

TYPED_TEST_P(PreferencesContract, anotherWriterIsHeardOnceAndRead) {
  int heard = 0;
  const Observation watching = this->storage_.observe("domain", [&] {
    ++heard;
    EXPECT_EQ(this->storage_.load("domain"), (ValueMap{{"a", 5}}));
  });
  this->world_.writeAsAnother("domain", {{"a", 5}});
  EXPECT_EQ(heard, 1);
  this->world_.settle();
  EXPECT_EQ(heard, 1);
}

TYPED_TEST_P(PreferencesContract, onlyTheDomainThatChangedIsToldAndOnlyToWhoStillListens) {
  int heard = 0;
  Observation watching = this->storage_.observe("domain", [&] { ++heard; });
  this->world_.writeAsAnother("other", {{"a", 1}});
  EXPECT_EQ(heard, 0);
  watching.reset();
  this->world_.writeAsAnother("domain", {{"a", 1}});
  EXPECT_EQ(heard, 0);
}

TYPED_TEST_P(PreferencesContract, ourOwnWritingIsNobodysChange) {
  int heard = 0;
  const Observation watching = this->storage_.observe("domain", [&] { ++heard; });
  this->storage_.store("domain", {{"a", 1}});
  this->world_.settle();
  EXPECT_EQ(heard, 0);
}

TYPED_TEST_P(PreferencesContract, anObserverMayStore) {
  const Observation watching = this->storage_.observe("domain", [&] {
    ValueMap values = this->storage_.load("domain");
    if (!values.emplace("echo", 1).second) return;
    EXPECT_TRUE(this->storage_.store("domain", values));
    EXPECT_TRUE(this->storage_.store("new domain", {{"a", 1}}));
  });
  this->world_.writeAsAnother("domain", {{"a", 1}});
  this->world_.settle();
  EXPECT_EQ(this->storage_.load("domain"), (ValueMap{{"a", 1}, {"echo", 1}}));
  EXPECT_EQ(this->storage_.load("new domain"), (ValueMap{{"a", 1}}));
}

REGISTER_TYPED_TEST_SUITE_P(PreferencesContract, anUnknownDomainIsEmpty,
                            whatIsStoredIsLoadedWithItsTypes, storingReplacesWhatWasLoaded,
                            domainsAreApart, aFailedWriteLeavesWhatWasThere,
                            anotherWriterIsHeardOnceAndRead,
                            onlyTheDomainThatChangedIsToldAndOnlyToWhoStillListens,
                            ourOwnWritingIsNobodysChange, anObserverMayStore);

}  // namespace velotap::test
