#include "config/app_identity.hpp"

#include <gtest/gtest.h>

#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {
namespace {

constexpr const char* kCurrent = "app.norwend.velotap";
constexpr const char* kLegacy = "app.norwend.Velotap";
constexpr const char* kMarker = "lowercaseIdentityMigrationCompleted";

class AppIdentityTest : public ::testing::Test {
 protected:
  void migrate() { AppIdentity::migratePreferences(storage_); }
  ValueMap current() { return storage_.load(kCurrent); }
  ValueMap legacy() { return storage_.load(kLegacy); }
  void setCurrent(const ValueMap& values) { storage_.store(kCurrent, values); }
  void setLegacy(const ValueMap& values) { storage_.store(kLegacy, values); }

  SimulatedPreferences storage_;
};

TEST_F(AppIdentityTest, domains) {
  EXPECT_EQ(AppIdentity::kCurrentDomain, kCurrent);
  EXPECT_EQ(AppIdentity::kLegacyDomain, kLegacy);
}

TEST_F(AppIdentityTest, theCurrentDomainWins) {
  setLegacy({{"enabled", false}, {"padTap4", true}});
  setCurrent({{"enabled", true}, {"mouseRotate", true}});
  migrate();
  EXPECT_EQ(
      current(),
      (ValueMap{{"enabled", true}, {"padTap4", true}, {"mouseRotate", true}, {kMarker, true}}));
}

TEST_F(AppIdentityTest, theLegacyDomainIsLeftAsItIs) {
  const ValueMap before = {{"enabled", false}, {"unknown", ValueMap{{"a", 1}}}};
  setLegacy(before);
  migrate();
  EXPECT_EQ(legacy(), before);
  EXPECT_EQ(current().at("unknown"), Value(ValueMap{{"a", 1}}));
}

TEST_F(AppIdentityTest, happensOnce) {
  setLegacy({{"enabled", false}});
  migrate();
  setCurrent({{kMarker, true}});
  setLegacy({{"enabled", false}, {"padTap4", true}});
  migrate();
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
}

TEST_F(AppIdentityTest, aMarkerOfTheLegacyDomainCountsOnlyThere) {
  setLegacy({{kMarker, true}, {"enabled", false}});
  migrate();
  EXPECT_EQ(current().at("enabled"), Value(false));
}

TEST_F(AppIdentityTest, onlyABooleanTrueMarks) {
  for (const Value& marker : {Value(false), Value(1), Value(1.0), Value("true"), Value("YES")}) {
    setLegacy({{"padTap4", true}});
    setCurrent({{kMarker, marker}});
    migrate();
    EXPECT_EQ(current(), (ValueMap{{"padTap4", true}, {kMarker, true}}));
  }
}

TEST_F(AppIdentityTest, withoutAnyDomainTheMarkerIsStored) {
  migrate();
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
  EXPECT_TRUE(legacy().empty());
}

TEST_F(AppIdentityTest, aFailedWriteIsTriedAgainAtTheNextLaunch) {
  setLegacy({{"enabled", false}});
  storage_.setReadOnly(true);
  migrate();
  EXPECT_TRUE(current().empty());
  storage_.setReadOnly(false);
  migrate();
  EXPECT_EQ(current(), (ValueMap{{"enabled", false}, {kMarker, true}}));
}

TEST_F(AppIdentityTest, otherDomainsMayBeNamed) {
  storage_.store("old", {{"a", 1}});
  AppIdentity::migratePreferences(storage_, "new", "old");
  EXPECT_EQ(storage_.load("new"), (ValueMap{{"a", 1}, {kMarker, true}}));
}

}  // namespace
}  // namespace velotap
