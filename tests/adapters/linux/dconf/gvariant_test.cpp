#include "adapters/linux/dconf/gvariant.hpp"

#include <gtest/gtest.h>

#include <string>

namespace velotap {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

/// Asks everything of a value and of all that it holds, so that a sanitizer sees each read.
std::size_t walk(const GVariant& value, int depth = 0) {
  std::size_t seen = 1;
  if (depth > 40) return seen;
  (void)value.boolean();
  (void)value.byte();
  (void)value.number();
  if (const auto text = value.text()) seen += text->size();
  if (const auto inside = value.inside()) seen += walk(*inside, depth + 1);
  for (std::size_t i = 0; i < value.childCount(); ++i) {
    if (const auto child = value.child(i)) seen += walk(*child, depth + 1);
  }
  return seen;
}

TEST(GVariant, readsPlainValues) {
  EXPECT_EQ(GVariant("b", "\1"sv).boolean(), true);
  EXPECT_EQ(GVariant("b", "\0"sv).boolean(), false);
  EXPECT_EQ(GVariant("y", "d").byte(), 'd');
  EXPECT_EQ(GVariant("s", "areas\0"sv).text(), "areas");
  EXPECT_EQ(GVariant("s", "\0"sv).text(), "");
}

TEST(GVariant, readsNumbersOfEitherByteOrder) {
  EXPECT_EQ(GVariant("u", "\1\2\0\0"sv).number(), 0x201U);
  EXPECT_EQ(GVariant("u", "\0\0\2\1"sv, /*swapped=*/true).number(), 0x201U);
}

TEST(GVariant, aValueOfAnotherTypeIsNotConverted) {
  EXPECT_FALSE(GVariant("y", "\1"sv).boolean());
  EXPECT_FALSE(GVariant("b", "\1"sv).text());
  EXPECT_FALSE(GVariant("s", "1\0"sv).number());
}

TEST(GVariant, plainValuesOfAWrongSizeAreNothing) {
  EXPECT_FALSE(GVariant("b", "").boolean());
  EXPECT_FALSE(GVariant("b", "\1\1"sv).boolean());
  EXPECT_FALSE(GVariant("u", "\1\1\1"sv).number());
  EXPECT_FALSE(GVariant("s", "no end").text());
  EXPECT_FALSE(GVariant("s", "").text());
  EXPECT_FALSE(GVariant("s", "two\0ends\0"sv).text());
}

TEST(GVariant, readsAnArrayOfPairsOfTexts) {
  const std::string bytes = "xkb\0de+nodeadkeys\0\4xkb\0us\0\4\x13\x1b"s;
  const GVariant pairs("a(ss)", bytes);
  ASSERT_EQ(pairs.childCount(), 2U);
  EXPECT_EQ(pairs.child(0)->child(0)->text(), "xkb");
  EXPECT_EQ(pairs.child(0)->child(1)->text(), "de+nodeadkeys");
  EXPECT_EQ(pairs.child(1)->child(1)->text(), "us");
  EXPECT_FALSE(pairs.child(2));
  EXPECT_FALSE(pairs.child(1)->child(2));
}

TEST(GVariant, anEmptyArrayHasNoChildren) {
  EXPECT_EQ(GVariant("a(ss)", "").childCount(), 0U);
  EXPECT_EQ(GVariant("au", "").childCount(), 0U);
}

TEST(GVariant, arraysOfFixedSizesHaveNoTable) {
  const GVariant numbers("au", "\1\0\0\0\2\0\0\0"sv);
  ASSERT_EQ(numbers.childCount(), 2U);
  EXPECT_EQ(numbers.child(1)->number(), 2U);
  EXPECT_EQ(GVariant("au", "\1\0\0\0\2\0\0"sv).childCount(), 0U) << "not a whole number of them";
}

TEST(GVariant, membersAreAligned) {
  const GVariant tuple("(yu)", "\7\0\0\0\5\0\0\0"sv);
  EXPECT_EQ(tuple.child(0)->byte(), 7);
  EXPECT_EQ(tuple.child(1)->number(), 5U);
}

TEST(GVariant, aVariantHoldsAValueAndItsType) {
  const auto inside = GVariant("v", "\1\0b"sv).inside();
  ASSERT_TRUE(inside);
  EXPECT_EQ(inside->type(), "b");
  EXPECT_EQ(inside->boolean(), true);
  EXPECT_FALSE(GVariant("v", "").inside());
  EXPECT_FALSE(GVariant("v", "\1\0"sv).inside()) << "no type";
  EXPECT_FALSE(GVariant("v", "\1\0bb"sv).inside()) << "two types";
  EXPECT_FALSE(GVariant("v", "\1\0(b"sv).inside()) << "half a type";
  EXPECT_FALSE(GVariant("v", "\1\0mb"sv).inside()) << "a maybe type";
}

TEST(GVariant, aDictionarysEntriesArePairs) {
  const std::string bytes = "ubuntu\0\0\1\0b\7\x0c"s;
  const GVariant all("a{sv}", bytes);
  ASSERT_EQ(all.childCount(), 1U);
  EXPECT_EQ(all.child(0)->child(0)->text(), "ubuntu");
  EXPECT_EQ(all.child(0)->child(1)->inside()->boolean(), true);
}

TEST(GVariant, offsetsBeyondTheBytesGiveNothing) {
  EXPECT_EQ(GVariant("as", "x\0\xf0"sv).childCount(), 0U);
  const GVariant crossed("as", "x\0\5\2"sv);
  EXPECT_FALSE(crossed.child(0));
  EXPECT_FALSE(GVariant("(ss)", "a\0b\0\xf0"sv).child(0));
  EXPECT_FALSE(GVariant("(ss)", "").child(1));
}

TEST(GVariant, typesThatAreNoneHaveNoChildren) {
  const std::string deep = std::string(70, '(') + "b";
  for (const char* type : {"", "a", "(", "(b", "z", "a(", "mb", deep.c_str()}) {
    EXPECT_EQ(GVariant(type, "\1\1\1\1"sv).childCount(), 0U) << type;
  }
}

TEST(GVariant, wideContainersHaveWideOffsets) {
  const std::string element = std::string(300, 'x') + '\0';
  const std::string bytes = element + element + "\x2d\1\x5a\2"s;
  const GVariant texts("as", bytes);
  ASSERT_EQ(texts.childCount(), 2U);
  EXPECT_EQ(texts.child(1)->text()->size(), 300U);
}

TEST(GVariant, noCutAndNoFlippedByteLeadsAstray) {
  const std::string type = "(s(yau)(ya{sv})a(ss))";
  const std::string bytes =
      "fingers\0c\0\0\0\0\0\0\0\xff\0\0\0\0\0\0\0d\0\0\0\0\0\0\0ubuntu\0\0default\0\0s\7\22"
      "xkb\0us\0\4\7\x30\x14\x08"s;
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    EXPECT_GE(walk(GVariant(type, std::string(bytes, 0, length))), 1U);
  }
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const char value : {'\0', '\1', '\x7f', '\xff'}) {
      std::string flipped = bytes;
      flipped[i] = value;
      EXPECT_GE(walk(GVariant(type, flipped)), 1U);
    }
  }
}

}  // namespace
}  // namespace velotap
