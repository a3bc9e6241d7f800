#include "adapters/json/json_value.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace velotap {
namespace {

TEST(ParseSettings, keepsTypes) {
  std::string error;
  const auto values = parseSettings(
      R"({"b": true, "i": 1, "r": 1.0, "t": "x", "l": ["a", 2], "m": {"k": false}, "n": null})",
      error);
  ASSERT_TRUE(values) << error;
  EXPECT_EQ(*values, (ValueMap{{"b", true},
                               {"i", 1},
                               {"r", 1.0},
                               {"t", "x"},
                               {"l", ValueArray{"a", 2}},
                               {"m", ValueMap{{"k", false}}}}));
}

TEST(ParseSettings, refusesWhatIsNoObject) {
  for (const char* text : {"", "[]", "1", "null", "{", "{\"a\":}", "{} x", "\xFF"}) {
    std::string error;
    EXPECT_FALSE(parseSettings(text, error)) << text;
    EXPECT_FALSE(error.empty()) << text;
  }
}

TEST(ParseSettings, survivesDepthAndSize) {
  std::string error;
  const std::string deep = "{\"a\":" + std::string(5000, '[') + std::string(5000, ']') + "}";
  EXPECT_TRUE(parseSettings(deep, error));
  const auto large = parseSettings("{\"a\": 18446744073709551615}", error);
  ASSERT_TRUE(large);
  EXPECT_NE(large->at("a").real(), nullptr) << "too large for an integer";
}

TEST(SettingsText, readsBackAsItWas) {
  const ValueMap values = {{"b", false},
                           {"i", -7},
                           {"r", 0.05},
                           {"whole", 2.0},
                           {"t", "ä \"quoted\""},
                           {"l", Value::strings({"x", ""})},
                           {"m", ValueMap{{"k", 1}}}};
  std::string error;
  const auto text = settingsText(values, error);
  ASSERT_TRUE(text) << error;
  EXPECT_TRUE(text->ends_with("}\n"));
  EXPECT_EQ(parseSettings(*text, error), values);
}

TEST(SettingsText, namesWhatJsonCannotHold) {
  std::string error;
  EXPECT_FALSE(settingsText({{"drift", std::numeric_limits<double>::infinity()}}, error));
  EXPECT_NE(error.find("drift"), std::string::npos);
  EXPECT_FALSE(settingsText({{"text", "\xFF"}}, error));
}

}  // namespace
}  // namespace velotap
