#include "config/app_identity.hpp"

#include <gtest/gtest.h>

#include "adapters/simulated/simulated_preferences.hpp"

namespace velotap {
namespace {

constexpr const char* kMarker = "lowercaseIdentityMigrationCompleted";

class AppIdentityTest : public testing::Test {
 protected:
  ValueMap current() { return preferences_.load(AppIdentity::kCurrentDomain); }
  SimulatedPreferences preferences_;
};

TEST_F(AppIdentityTest, theCurrentDomainWins) {
  preferences_.store(AppIdentity::kLegacyDomain, {{"enabled", false}, {"padTap4", true}});
  preferences_.store(AppIdentity::kCurrentDomain, {{"enabled", true}});
  AppIdentity::migratePreferences(preferences_);
  EXPECT_EQ(current(), (ValueMap{{"enabled", true}, {"padTap4", true}, {kMarker, true}}));
  EXPECT_EQ(preferences_.load(AppIdentity::kLegacyDomain),
            (ValueMap{{"enabled", false}, {"padTap4", true}}))
      << "left as it was";
}

TEST_F(AppIdentityTest, happensOnce) {
  AppIdentity::migratePreferences(preferences_);
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
  preferences_.store(AppIdentity::kLegacyDomain, {{"padTap4", true}});
  AppIdentity::migratePreferences(preferences_);
  EXPECT_EQ(current(), (ValueMap{{kMarker, true}}));
}

TEST_F(AppIdentityTest, onlyTheBooleanTrueIsTheMarker) {
  preferences_.store(AppIdentity::kLegacyDomain, {{"padTap4", true}});
  for (const Value& other : {Value(false), Value(1), Value("true")}) {
    preferences_.store(AppIdentity::kCurrentDomain, {{kMarker, other}});
    AppIdentity::migratePreferences(preferences_);
    EXPECT_EQ(current(), (ValueMap{{"padTap4", true}, {kMarker, true}}));
  }
}

}  // namespace
}  // namespace velotap
