// The merge of the settings that were stored under an older name, over the preferences service.
#include <gtest/gtest.h>

#include "adapters/macos/preferences/cf_preferences_storage.hpp"
#include "config/app_identity.hpp"
#include "fakes/fake_cocoa.hpp"
#include "fakes/fake_runtime.hpp"

namespace velotap::test {
namespace {

constexpr const char* kCurrent = "app.norwend.velotap";
constexpr const char* kLegacy = "app.norwend.Velotap";
constexpr const char* kMarker = "lowercaseIdentityMigrationCompleted";

class IdentityOverPreferencesTest : public ::testing::Test {
 protected:
  FakeCoreFoundation cf_;
  FakeDispatch dispatch_;
  DispatchMainQueue queue_{dispatch_.api()};
  FakeChanges changes_;
  CfPreferencesStorage storage_{cf_.api(), changes_, queue_, {"enabled"}};
};

TEST_F(IdentityOverPreferencesTest, whatStandsInBothIsTheNewOnesAndTheOldDomainStays) {
  storage_.store(kLegacy, {{"enabled", false}, {"maxTapDrift", 0.1}});
  storage_.store(kCurrent, {{"enabled", true}});
  AppIdentity::migratePreferences(storage_);
  EXPECT_EQ(storage_.load(kCurrent),
            (ValueMap{{"enabled", true}, {"maxTapDrift", 0.1}, {kMarker, true}}));
  EXPECT_EQ(storage_.load(kLegacy), (ValueMap{{"enabled", false}, {"maxTapDrift", 0.1}}));
}

TEST_F(IdentityOverPreferencesTest, itHappensOnce) {
  AppIdentity::migratePreferences(storage_);
  storage_.store(kLegacy, {{"enabled", false}});
  AppIdentity::migratePreferences(storage_);
  EXPECT_EQ(storage_.load(kCurrent), (ValueMap{{kMarker, true}}));
}

TEST_F(IdentityOverPreferencesTest, aWriteThatFailsIsTriedAgainAtTheNextLaunch) {
  storage_.store(kLegacy, {{"enabled", false}});
  cf_.fail("CFPreferencesSynchronize");
  AppIdentity::migratePreferences(storage_);
  EXPECT_TRUE(storage_.load(kCurrent).empty());
  cf_.succeed("CFPreferencesSynchronize");
  AppIdentity::migratePreferences(storage_);
  EXPECT_EQ(storage_.load(kCurrent), (ValueMap{{"enabled", false}, {kMarker, true}}));
}

}  // namespace
}  // namespace velotap::test
