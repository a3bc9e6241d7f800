#include "adapters/linux/workspace/x11_properties.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using namespace std::string_view_literals;

PropertyValue value(int format, std::string_view bytes) {
  return {.answered = true, .format = format, .bytes = bytes};
}

std::string numbers(std::initializer_list<std::uint32_t> list) {
  std::string bytes;
  for (const std::uint32_t number : list) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
  }
  return bytes;
}

TEST(X11Properties, readsTheFirstNumber) {
  EXPECT_EQ(firstNumber(value(32, numbers({7, 8}))), 7U);
  EXPECT_EQ(firstNumber(value(32, numbers({0}))), 0U);
}

TEST(X11Properties, refusesNumbersOfAnotherFormOrLength) {
  const std::string four = numbers({7});
  EXPECT_FALSE(firstNumber(value(8, four)));
  EXPECT_FALSE(firstNumber(value(32, std::string_view(four).substr(1))));
  EXPECT_FALSE(firstNumber(PropertyValue{}));
}

TEST(X11Properties, findsANumberAmongMany) {
  const std::string list = numbers({1, 500, 3});
  EXPECT_TRUE(containsNumber(value(32, list), 500));
  EXPECT_TRUE(containsNumber(value(32, list), 3));
  EXPECT_FALSE(containsNumber(value(32, list), 2));
  EXPECT_FALSE(containsNumber(value(8, list), 3));
  EXPECT_FALSE(containsNumber(value(32, list.substr(0, list.size() - 1)), 3));
}

TEST(X11Properties, textEndsAtItsTerminator) {
  EXPECT_EQ(firstText(value(8, "org.example.App"sv)), "org.example.App");
  EXPECT_EQ(firstText(value(8, "one\0two"sv)), "one");
  EXPECT_EQ(firstText(value(16, "one"sv)), "");
  EXPECT_EQ(firstText(PropertyValue{}), "");
}

TEST(X11Properties, splitsTheWindowClass) {
  const auto split = [](std::string_view bytes) { return instanceAndClass(value(8, bytes)); };
  using Pair = std::pair<std::string, std::string>;
  EXPECT_EQ(split("navigator\0Firefox\0"sv), Pair("navigator", "Firefox"));
  EXPECT_EQ(split("navigator\0Firefox"sv), Pair("navigator", "Firefox"));
  EXPECT_EQ(split("navigator\0"sv), Pair("navigator", ""));
  EXPECT_EQ(split("navigator"sv), Pair("navigator", ""));
  EXPECT_EQ(split("\0Firefox\0"sv), Pair("", "Firefox"));
  EXPECT_EQ(split("\0\0"sv), Pair("", ""));
  EXPECT_EQ(split(""sv), Pair("", ""));
  EXPECT_EQ(instanceAndClass(value(32, "navigator\0Firefox\0"sv)), Pair("", ""));
}

}  // namespace
}  // namespace velotap
