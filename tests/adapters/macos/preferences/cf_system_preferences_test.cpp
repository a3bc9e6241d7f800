#include "adapters/macos/preferences/cf_system_preferences.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_core_foundation.hpp"

namespace velotap::test {
namespace {

constexpr const char* kTrackpad = "com.apple.AppleMultitouchTrackpad";

TEST(CfSystemPreferencesTest, whatIsSetIsReadWithItsType) {
  FakeCoreFoundation cf;
  cf.preferSet(kTrackpad, "whole", cf.makeNumber(std::int64_t{2}));
  cf.preferSet(kTrackpad, "real", cf.makeNumber(2.0));
  cf.preferSet(kTrackpad, "date", cf.make(FakeKind::date));
  CfSystemPreferences preferences(cf.api());
  EXPECT_EQ(preferences.read(kTrackpad, "whole"), Value(2));
  EXPECT_EQ(preferences.read(kTrackpad, "real"), Value(2.0));
  EXPECT_EQ(preferences.read(kTrackpad, "date"), std::nullopt);
  EXPECT_EQ(preferences.read(kTrackpad, "missing"), std::nullopt);
  EXPECT_EQ(preferences.read("another", "whole"), std::nullopt);
}

TEST(CfSystemPreferencesTest, namesThatAreNoTextReadNothing) {
  FakeCoreFoundation cf;
  CfSystemPreferences preferences(cf.api());
  EXPECT_EQ(preferences.read("\xff", "key"), std::nullopt);
  EXPECT_EQ(preferences.read(kTrackpad, "\xff"), std::nullopt);
}

}  // namespace
}  // namespace velotap::test
