#include "config/app_identity.hpp"

#include <gtest/gtest.h>

#include "support/fake_ports.hpp"

namespace velotap {
namespace {

constexpr const char* kCurrent = "app.norwend.velotap";
constexpr const char* kLegacy = "app.norwend.Velotap";
constexpr const char* kMarker = "lowercaseIdentityMigrationCompleted";

class AppIdentityTest : public ::testing::Test {
 protected:
  void migrate() { AppIdentity::migratePreferences(storage_); }
  ValueMap& current() { return storage_.domains[kCurrent]; }
  ValueMap& legacy() { return storage_.domains[kLegacy]; }

  test::MemoryPreferences storage_;
};

TEST_F(AppIdentityTest, domains) {
  EXPECT_EQ(AppIdentity::kCurrentDomain, kCurrent);
  EXPECT_EQ(AppIdentity::kLegacyDomain, kLegacy);
}

TEST_F(AppIdentityTest, theCurrentDomainWins) {
  legacy() = {{"enabled", false}, {"padTap4", true}};
  current() = {{"enabled", true}, {"mouseRotate", true}};
  migrate();
  EXPECT_EQ(
      current(),
      (ValueMap{{"enabled", true}, {"padTap4", true}, {"mouseRotate", true}, {kMarker, true}}));
}

TEST_F(AppIdentityTest, theLegacyDomainIsLeftAsItIs) {
  legacy() = {{"enabled", false}, {"unknown", ValueMap{{"a", 1}}}};
  const ValueMap before = legacy();
  migrate();
  EXPECT_EQ(legacy(), before);
  EXPECT_EQ(current().at("unknown"), Value(ValueMap{{"a", 1}}));
}

TEST_F(AppIdentityTest, happensOnce) {
  legacy() = {{"enabled", false}};
  migrate();
  current().erase("enabled");
  legacy().insert_or_assign("padTap4", true);
  migrate();
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
}

TEST_F(AppIdentityTest, aMarkerOfTheLegacyDomainCountsOnlyThere) {
  legacy() = {{kMarker, true}, {"enabled", false}};
  migrate();
  EXPECT_EQ(current().at("enabled"), Value(false));
}

TEST_F(AppIdentityTest, onlyABooleanTrueMarks) {
  for (const Value& marker : {Value(false), Value(1), Value(1.0), Value("true"), Value("YES")}) {
    legacy() = {{"padTap4", true}};
    current() = {{kMarker, marker}};
    migrate();
    EXPECT_EQ(current(), (ValueMap{{"padTap4", true}, {kMarker, true}}));
  }
}

TEST_F(AppIdentityTest, withoutAnyDomainTheMarkerIsStored) {
  migrate();
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
  EXPECT_FALSE(storage_.domains.contains(kLegacy));
}

TEST_F(AppIdentityTest, aFailedWriteIsTriedAgainAtTheNextLaunch) {
  legacy() = {{"enabled", false}};
  storage_.refuses = true;
  migrate();
  EXPECT_FALSE(storage_.domains.contains(kCurrent));
  storage_.refuses = false;
  migrate();
  EXPECT_EQ(current(), (ValueMap{{"enabled", false}, {kMarker, true}}));
}

TEST_F(AppIdentityTest, otherDomainsMayBeNamed) {
  storage_.domains["old"] = {{"a", 1}};
  AppIdentity::migratePreferences(storage_, "new", "old");
  EXPECT_EQ(storage_.domains["new"], (ValueMap{{"a", 1}, {kMarker, true}}));
}

}  // namespace
}  // namespace velotap
