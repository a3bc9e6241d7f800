#include "settings/filter_disclosure.hpp"

#include <gtest/gtest.h>

#include "settings_fixture.hpp"

namespace velotap {
namespace {

TEST(SettingsFilterDisclosure, OpensItselfWhileFiltersAreActive) {
  const auto three = settingsFilterDisclosure(3, test::english());
  EXPECT_EQ(three.title, "Filter (3 active)");
  EXPECT_EQ(three.symbol, "line.3.horizontal.decrease.circle.fill");
  EXPECT_TRUE(three.opensOnAppearing);
  EXPECT_TRUE(three.showsReset);
  EXPECT_EQ(three.resetTitle, "Reset Filters");
  EXPECT_TRUE(settingsFilterDisclosure(1, test::english()).showsReset);
}

TEST(SettingsFilterDisclosure, StaysFoldedWithoutFilters) {
  const auto none = settingsFilterDisclosure(0, test::textsIn("de"));
  EXPECT_EQ(none.title, "Filter");
  EXPECT_EQ(none.symbol, "line.3.horizontal.decrease.circle");
  EXPECT_FALSE(none.opensOnAppearing);
  EXPECT_FALSE(none.showsReset);
}

}  // namespace
}  // namespace velotap
