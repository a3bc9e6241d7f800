#include "base/utf8.hpp"

#include <gtest/gtest.h>

#include <string>

namespace velotap {
namespace {

using std::string_view_literals::operator""sv;

TEST(Utf8, readsTheFirstAndLastCharacterOfEachLength) {
  struct Row {
    std::string_view bytes;
    char32_t code;
  };
  const Row rows[] = {{"\0"sv, 0},
                      {"\x7F", 0x7F},
                      {"\xC2\x80", 0x80},
                      {"\xDF\xBF", 0x7FF},
                      {"\xE0\xA0\x80", 0x800},
                      {"\xED\x9F\xBF", 0xD7FF},
                      {"\xEE\x80\x80", 0xE000},
                      {"\xEF\xBF\xBF", 0xFFFF},
                      {"\xF0\x90\x80\x80", 0x10000},
                      {"\xF4\x8F\xBF\xBF", 0x10FFFF}};
  for (const Row& row : rows) {
    const auto character = utf8CharacterAt(row.bytes, 0);
    ASSERT_TRUE(character) << static_cast<std::uint32_t>(row.code);
    EXPECT_EQ(static_cast<std::uint32_t>(character->code), static_cast<std::uint32_t>(row.code));
    EXPECT_EQ(character->length, row.bytes.size());
    EXPECT_TRUE(isUtf8(row.bytes));
  }
}

TEST(Utf8, refusesWhatIsNoCharacter) {
  const std::string_view wrong[] = {
      "\x80",              // a continuation on its own
      "\xBF",              //
      "\xC0\x80",          // overlong
      "\xC1\xBF",          //
      "\xE0\x9F\xBF",      //
      "\xF0\x8F\xBF\xBF",  //
      "\xED\xA0\x80",      // surrogates
      "\xED\xBF\xBF",      //
      "\xF4\x90\x80\x80",  // beyond Unicode
      "\xF5\x80\x80\x80",  //
      "\xF8\x88\x80\x80",  // five bytes were abolished
      "\xFE",              //
      "\xFF",              //
      "\xC2",              // cut off
      "\xE2\x82",          //
      "\xF0\x9F\x98",      //
      "\xC2\x20",          // interrupted
      "\xE2\x82\x20",      //
  };
  for (const std::string_view text : wrong) {
    EXPECT_FALSE(utf8CharacterAt(text, 0)) << testing::PrintToString(std::string(text));
    EXPECT_FALSE(isUtf8(text));
    EXPECT_FALSE(isUtf8("before " + std::string(text)));
    EXPECT_FALSE(isUtf8(std::string(text) + " behind"));
  }
}

TEST(Utf8, readsInTheMiddleOfAText) {
  const std::string_view text = "a\xC3\xA9z";
  EXPECT_EQ(static_cast<std::uint32_t>(utf8CharacterAt(text, 1)->code), 0xE9U);
  EXPECT_EQ(utf8CharacterAt(text, 1)->length, 2U);
  EXPECT_EQ(static_cast<std::uint32_t>(utf8CharacterAt(text, 3)->code), std::uint32_t{'z'});
  EXPECT_FALSE(utf8CharacterAt(text, 2)) << "the middle of a character";
}

TEST(Utf8, theEmptyTextIsFine) {
  EXPECT_TRUE(isUtf8(""));
}

TEST(Utf8, repairsWhatIsBroken) {
  const std::string r = "\uFFFD";
  EXPECT_EQ(repairedUtf8(""), "");
  EXPECT_EQ(repairedUtf8("plain, ä, €, 😀"), "plain, ä, €, 😀");
  EXPECT_EQ(repairedUtf8("a\x80z"), "a" + r + "z");
  EXPECT_EQ(repairedUtf8("\xFF\xFE"), r + r);
  // A character that was cut off is one gap, however much of it is there.
  EXPECT_EQ(repairedUtf8("a\xE2"), "a" + r);
  EXPECT_EQ(repairedUtf8("a\xE2\x82"), "a" + r);
  EXPECT_EQ(repairedUtf8("\xF0\x9F\x98z"), r + "z");
  EXPECT_EQ(repairedUtf8("\xE2\xE2\x82\xAC"), r + "€");
  // Bytes that no character begins with stand for themselves.
  EXPECT_EQ(repairedUtf8("\xC0\x80"), r + r);
  EXPECT_EQ(repairedUtf8("\xE0\x80\x80"), r + r + r);
  EXPECT_EQ(repairedUtf8("\xED\xA0\x80"), r + r + r);
  EXPECT_EQ(repairedUtf8("\xF4\x90\x80\x80"), r + r + r + r);
}

}  // namespace
}  // namespace velotap
