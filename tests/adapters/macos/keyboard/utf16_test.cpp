#include "adapters/macos/keyboard/utf16.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

std::string of(std::u16string_view units) {
  return utf8Of({units.data(), units.size()});
}

TEST(Utf16Test, everyLengthOfCharacterAtItsLimits) {
  EXPECT_EQ(of(u""), "");
  EXPECT_EQ(of(u"\u007f"), "\x7f");
  EXPECT_EQ(of(u"\u0080"), "\xc2\x80");
  EXPECT_EQ(of(u"\u07ff"), "\xdf\xbf");
  EXPECT_EQ(of(u"\u0800"), "\xe0\xa0\x80");
  EXPECT_EQ(of(u"\uffff"), "\xef\xbf\xbf");
  EXPECT_EQ(of(u"\U00010000"), "\xf0\x90\x80\x80");
  EXPECT_EQ(of(u"\U0010ffff"), "\xf4\x8f\xbf\xbf");
  EXPECT_EQ(of(u"\ud7ff"), "\xed\x9f\xbf");
  EXPECT_EQ(of(u"\ue000"), "\xee\x80\x80");
}

TEST(Utf16Test, halvesWithoutTheirOtherHalfAreReplaced) {
  const char16_t high = 0xD83D;
  const char16_t low = 0xDE00;
  EXPECT_EQ(utf8Of(std::u16string{high}), "\xef\xbf\xbd");
  EXPECT_EQ(utf8Of(std::u16string{low, u'a'}),
            "\xef\xbf\xbd"
            "a");
  EXPECT_EQ(utf8Of(std::u16string{high, high, low}), "\xef\xbf\xbd\xf0\x9f\x98\x80");
}

}  // namespace
}  // namespace velotap
