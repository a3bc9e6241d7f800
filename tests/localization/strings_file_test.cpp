#include "localization/strings_file.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace velotap {
namespace {

using namespace std::string_literals;

std::string only(std::string_view source) {
  const StringsFile file = parseStrings(source);
  EXPECT_FALSE(file.error) << file.error->message;
  EXPECT_EQ(file.texts.size(), 1U);
  return file.texts.empty() ? "" : file.texts.begin()->second;
}

void expectError(std::string_view source, int line, std::string_view message) {
  const StringsFile file = parseStrings(source);
  ASSERT_TRUE(file.error) << source;
  EXPECT_EQ(file.error->line, line) << source;
  EXPECT_EQ(file.error->message, message) << source;
  EXPECT_TRUE(file.texts.empty()) << source;
}

TEST(StringsFile, ReadsPairsInAnyLayout) {
  const StringsFile file = parseStrings("\"a\"=\"1\";\"b\"\n = \t\"2\" ;\r\n\"\" = \"\";");
  ASSERT_FALSE(file.error);
  EXPECT_EQ(file.texts, (StringTable{{"", ""}, {"a", "1"}, {"b", "2"}}));
}

TEST(StringsFile, TakesPlainKeysWithoutQuotes) {
  EXPECT_EQ(parseStrings("design.a_b-9 = \"x\";").texts, (StringTable{{"design.a_b-9", "x"}}));
}

TEST(StringsFile, OfNothingIsEmpty) {
  for (const auto* source : {"", " \n", "/* only */", "// only", "\xEF\xBB\xBF"}) {
    const StringsFile file = parseStrings(source);
    EXPECT_FALSE(file.error) << source;
    EXPECT_TRUE(file.texts.empty()) << source;
  }
}

TEST(StringsFile, SkipsCommentsButNotInTexts) {
  EXPECT_EQ(
      only("/* \"a\" = \"no\"; **/ // \"b\" = \"no\";\n\"k\" /**/ = // here\n\"// /* t */\";"),
      "// /* t */");
}

TEST(StringsFile, ReadsEscapes) {
  EXPECT_EQ(only(R"("k" = "\"\\\'\n\r\t";)"), "\"\\'\n\r\t");
  EXPECT_EQ(only(R"("k" = "a\0b";)"), "a\0b"s);
  EXPECT_EQ(only(R"("k" = "\U0041\u00e9\u20AC\UD83D\UDE00";)"), "Aé€😀");
  EXPECT_EQ(only("\"k\" = \"two\nlines ⌘\";"), "two\nlines ⌘");
}

TEST(StringsFile, NamesTheLineOfABrokenPlace) {
  expectError("\"a\" = \"1\";\n\"b\" \"2\";", 2, "expected '='");
  expectError("\"a\" = \"1\"\n\"b\" = \"2\";", 2, "expected ';'");
  expectError("\"a\" = \"1\"", 1, "expected ';' but the file ends");
  expectError("\"a\"", 1, "expected '=' but the file ends");
  expectError("\"a\" = ", 1, "expected a text in quotes");
  expectError("\"a\" = b;", 1, "expected a text in quotes");
  expectError("= \"b\";", 1, "expected a key");
  expectError("\n\n\"a\" = \"open;\n\n", 3, "a text without end");
  expectError("\n/* open", 2, "a comment without end");
  expectError(R"("a" = "\)", 1, "the file ends in an escape");
  expectError(R"("a" = "\q";)", 1, R"(unknown escape \q)");
  expectError(R"("a" = "\U00g0";)", 1, "expected four hexadecimal digits");
  expectError(R"("a" = "\U00)", 1, "expected four hexadecimal digits");
  expectError("\"a\" = \"\xFF\";", 1, "not UTF-8");
}

TEST(StringsFile, KeepsTheFirstTextOfAKeyAndNamesTheSecond) {
  const StringsFile file = parseStrings("\"a\" = \"1\";\n\"b\" = \"2\";\n\"a\" = \"3\";");
  EXPECT_FALSE(file.error);
  EXPECT_EQ(file.texts, (StringTable{{"a", "1"}, {"b", "2"}}));
  ASSERT_EQ(file.repeated.size(), 1U);
  EXPECT_EQ(file.repeated[0].line, 3);
  EXPECT_EQ(file.repeated[0].message, "the key \"a\" occurs twice");
}

TEST(StringsFile, RefusesHalvesOfCharacters) {
  expectError(R"("a" = "\UDE00";)", 1, "half of a character");
  expectError(R"("a" = "\UD83D";)", 1, "half of a character");
  expectError(R"("a" = "\UD83D\U0041";)", 1, "half of a character");
}

TEST(StringsFile, SurvivesEveryPrefixOfAFile) {
  constexpr std::string_view kWhole = "/* c */ \"k\\U00e9\" = \"v\\n\"; // end\nkey = \"\\\"\";";
  for (std::size_t length = 0; length < kWhole.size(); ++length) {
    const StringsFile file = parseStrings(kWhole.substr(0, length));
    EXPECT_TRUE(!file.error || file.texts.empty()) << length;
  }
  EXPECT_EQ(parseStrings(kWhole).texts.size(), 2U);
}

}  // namespace
}  // namespace velotap
