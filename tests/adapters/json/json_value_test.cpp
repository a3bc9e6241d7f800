#include "adapters/json/json_value.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace velotap {
namespace {

using std::string_literals::operator""s;

std::optional<ValueMap> parse(std::string_view text) {
  std::string error;
  auto values = parseSettings(text, error);
  EXPECT_EQ(values.has_value(), error.empty()) << text << ": " << error;
  return values;
}

std::string text(const ValueMap& values) {
  std::string error;
  const auto written = settingsText(values, error);
  EXPECT_TRUE(written) << error;
  return written.value_or("");
}

/// `[[[…]]]` with so many arrays inside each other.
std::string nested(int arrays) {
  const auto count = static_cast<std::size_t>(arrays);
  return std::string(count, '[') + std::string(count, ']');
}

TEST(JsonSettings, typesAreTold) {
  const auto values = parse(R"({"b": true, "i": 1, "r": 1.0, "e": 1e2, "t": "x",
                                "a": [1, "y", [false]], "m": {"k": 2}})");
  ASSERT_TRUE(values);
  EXPECT_EQ(*values,
            (ValueMap{{"b", true},
                      {"i", 1},
                      {"r", 1.0},
                      {"e", 100.0},
                      {"t", "x"},
                      {"a", ValueArray{Value(1), Value("y"), Value(ValueArray{Value(false)})}},
                      {"m", ValueMap{{"k", 2}}}}));
}

TEST(JsonSettings, everyValueSurvivesARoundTrip) {
  using Real = std::numeric_limits<double>;
  const ValueMap values = {{"true", true},
                           {"false", false},
                           {"zero", 0},
                           {"smallest", INT64_MIN},
                           {"largest", INT64_MAX},
                           {"real one", 1.0},
                           {"minus zero", -0.0},
                           {"drift", 0.05},
                           {"max", Real::max()},
                           {"tiny", Real::denorm_min()},
                           {"third", 1.0 / 3},
                           {"", "empty key"},
                           {"text", "quotes \" \\ / \b\f\n\r\t \x01 é 😀"},
                           {"nul", "\0inside"s},
                           {"empty", ""},
                           {"no list", ValueArray()},
                           {"list", Value::strings({"b", "a", "b"})},
                           {"map", ValueMap{{"inner", ValueArray{Value(ValueMap())}}}}};
  const auto again = parse(text(values));
  ASSERT_TRUE(again);
  EXPECT_EQ(*again, values);
  EXPECT_TRUE(std::signbit(*again->at("minus zero").real()));
}

TEST(JsonSettings, isReadableText) {
  EXPECT_EQ(text({{"b", 1.0}, {"a", ValueArray{Value("x")}}, {"c", true}}),
            "{\n  \"a\": [\n    \"x\"\n  ],\n  \"b\": 1.0,\n  \"c\": true\n}\n");
  EXPECT_EQ(text({}), "{}\n");
}

TEST(JsonSettings, numbersTooLargeForAnIntegerBecomeReal) {
  EXPECT_EQ(parse(R"({"a": 9223372036854775807})"), (ValueMap{{"a", INT64_MAX}}));
  EXPECT_EQ(parse(R"({"a": 9223372036854775808})"), (ValueMap{{"a", 9223372036854775808.0}}));
  EXPECT_EQ(parse(R"({"a": -9223372036854775808})"), (ValueMap{{"a", INT64_MIN}}));
  EXPECT_EQ(parse(R"({"a": -9223372036854775809})"), (ValueMap{{"a", -9223372036854775808.0}}));
}

TEST(JsonSettings, nullIsNoValue) {
  EXPECT_EQ(parse(R"({"a": null, "b": [null, 1], "c": {"d": null}})"),
            (ValueMap{{"b", ValueArray{Value(1)}}, {"c", ValueMap()}}));
}

TEST(JsonSettings, theLastOfTwoEqualKeysCounts) {
  EXPECT_EQ(parse(R"({"a": 1, "a": 2})"), (ValueMap{{"a", 2}}));
}

TEST(JsonSettings, aByteOrderMarkIsSkipped) {
  EXPECT_EQ(parse("\xEF\xBB\xBF{}"), ValueMap());
}

TEST(JsonSettings, whatIsNoJsonIsRefusedWithAReason) {
  for (const std::string& wrong : {""s,
                                   " "s,
                                   "{"s,
                                   "}"s,
                                   "{]"s,
                                   "{\"a\"}"s,
                                   "{\"a\":}"s,
                                   "{\"a\":1,}"s,
                                   "{a:1}"s,
                                   "{'a':1}"s,
                                   "{\"a\":01}"s,
                                   "{\"a\":NaN}"s,
                                   "{\"a\":Infinity}"s,
                                   "{\"a\":1e999}"s,
                                   "{\"a\":tru}"s,
                                   "{\"a\":\"\xFF\"}"s,
                                   "{\"a\":\"\xED\xA0\x80\"}"s,
                                   "{\"a\":\"\n\"}"s,
                                   "{}{}"s,
                                   "{} x"s,
                                   "{}\0"s,
                                   "// c\n{}"s}) {
    EXPECT_FALSE(parse(wrong)) << testing::PrintToString(wrong);
  }
}

TEST(JsonSettings, whatIsNoDictionaryIsRefused) {
  for (const char* other : {"[]", "1", "1.5", "\"text\"", "true", "null"}) {
    std::string error;
    EXPECT_FALSE(parseSettings(other, error));
    EXPECT_EQ(error, "it does not hold a JSON object");
  }
}

TEST(JsonSettings, nestsUpTo64Deep) {
  const auto inMap = [](int arrays) { return "{\"a\": " + nested(arrays) + "}"; };
  EXPECT_TRUE(parse(inMap(63)));
  EXPECT_TRUE(parse(inMap(64)));
  EXPECT_FALSE(parse(inMap(65)));
  EXPECT_FALSE(parse("{\"kept\": 1, \"a\": " + nested(65) + "}")) << "whole, or nothing is lost";
  EXPECT_FALSE(parse(inMap(200'000)));
}

TEST(JsonSettings, whatJsonCannotHoldIsRefusedWithTheKey) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double number : {infinity, -infinity, nan}) {
    std::string error;
    EXPECT_FALSE(settingsText({{"good", 1}, {"bad", number}}, error));
    EXPECT_EQ(error, "\"bad\": the number is not finite");
    error.clear();
    EXPECT_FALSE(settingsText({{"list", ValueArray{Value(number)}}}, error));
    EXPECT_FALSE(error.empty());
  }
  std::string error;
  EXPECT_FALSE(settingsText({{"text", "\xFF"}}, error));
  EXPECT_FALSE(error.empty());
}

TEST(JsonValue, oneValueOfAnyKind) {
  std::string error;
  EXPECT_EQ(parseValue("true", error), Value(true));
  EXPECT_EQ(parseValue(" 300 ", error), Value(300));
  EXPECT_EQ(parseValue("0.05", error), Value(0.05));
  EXPECT_EQ(parseValue("\"x\"", error), Value("x"));
  EXPECT_EQ(parseValue("[\"a\",\"b\"]", error), Value::strings({"a", "b"}));
  EXPECT_EQ(parseValue("{\"a\":{}}", error), Value(ValueMap{{"a", ValueMap()}}));
  EXPECT_EQ(parseValue(nested(65), error).has_value(), true);
  EXPECT_TRUE(error.empty());
}

TEST(JsonValue, nullAndNestingAreRefusedWithAReason) {
  std::string error;
  EXPECT_FALSE(parseValue("null", error));
  EXPECT_EQ(error, "null is no value");
  EXPECT_FALSE(parseValue(nested(66), error));
  EXPECT_EQ(error, "it is nested more than 64 deep");
  EXPECT_FALSE(parseValue("tru", error));
  EXPECT_NE(error, "");
}

}  // namespace
}  // namespace velotap
