#include "adapters/linux/keyboard/key_codes.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <set>

namespace velotap {
namespace {

TEST(KeyCodes, theShortcutsPositionsAreThoseOfTheAnsiKeyboard) {
  EXPECT_EQ(evdevCodeOf(33), KEY_LEFTBRACE);
  EXPECT_EQ(evdevCodeOf(30), KEY_RIGHTBRACE);
  EXPECT_EQ(evdevCodeOf(24), KEY_EQUAL);
  EXPECT_EQ(evdevCodeOf(27), KEY_MINUS);
}

TEST(KeyCodes, lettersFollowTheirPlaceNotTheirOrder) {
  EXPECT_EQ(evdevCodeOf(0), KEY_A);
  EXPECT_EQ(evdevCodeOf(6), KEY_Z);
  EXPECT_EQ(evdevCodeOf(16), KEY_Y);
  EXPECT_EQ(evdevCodeOf(12), KEY_Q);
  EXPECT_EQ(evdevCodeOf(46), KEY_M);
}

TEST(KeyCodes, theDigitsSixAndFiveStandInTheirOldOrder) {
  EXPECT_EQ(evdevCodeOf(22), KEY_6);
  EXPECT_EQ(evdevCodeOf(23), KEY_5);
}

TEST(KeyCodes, theTableEndsAtItsLastCode) {
  EXPECT_EQ(evdevCodeOf(63), KEY_FN);
  EXPECT_EQ(evdevCodeOf(64), KEY_F17);
  EXPECT_EQ(evdevCodeOf(65), std::nullopt);
  EXPECT_EQ(evdevCodeOf(0xffff), std::nullopt);
}

TEST(KeyCodes, onlyFiftyTwoHasNoKey) {
  for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
    EXPECT_EQ(evdevCodeOf(code).has_value(), code != 52) << code;
  }
}

TEST(KeyCodes, noKeyStandsAtTwoCodes) {
  std::set<std::uint16_t> seen;
  for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
    if (const auto key = evdevCodeOf(code)) {
      EXPECT_TRUE(seen.insert(*key).second) << code;
    }
  }
  EXPECT_EQ(seen.size(), 64U);
}

TEST(KeyCodes, theInverseGivesEveryCodeBack) {
  for (std::uint16_t code = 0; code <= kLastVirtualKeyCode; ++code) {
    if (const auto key = evdevCodeOf(code)) {
      EXPECT_EQ(virtualKeyCodeOf(*key), code);
    }
  }
}

TEST(KeyCodes, keysOutsideTheTableHaveNoCode) {
  EXPECT_EQ(virtualKeyCodeOf(KEY_RESERVED), std::nullopt);
  EXPECT_EQ(virtualKeyCodeOf(KEY_F1), std::nullopt);
  EXPECT_EQ(virtualKeyCodeOf(KEY_KPPLUS), std::nullopt);
}

}  // namespace
}  // namespace velotap
