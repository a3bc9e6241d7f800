#include "adapters/linux/files/entry_value.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(EntryValueTest, KnownEscapesAreReplaced) {
  EXPECT_EQ(unescapedEntryValue(R"(a\sb\nc\td\re\\f)"), "a b\nc\td\re\\f");
  EXPECT_EQ(unescapedEntryValue(R"(\\s)"), "\\s") << "an escaped backslash escapes nothing";
}

TEST(EntryValueTest, WhatIsNoEscapeStaysAsItIs) {
  EXPECT_EQ(unescapedEntryValue(""), "");
  EXPECT_EQ(unescapedEntryValue("plain ü"), "plain ü");
  EXPECT_EQ(unescapedEntryValue(R"(\"\$\x)"), R"(\"\$\x)");
  EXPECT_EQ(unescapedEntryValue("end\\"), "end\\");
}

}  // namespace
}  // namespace velotap
