#include "config/app_identifier_text.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

using std::string_literals::operator""s;

std::string clean(std::string_view text) {
  return cleanAppIdentifier(text).value_or("(dropped)");
}
constexpr const char* kDropped = "(dropped)";

TEST(AppIdentifierText, isTrimmedOfWhiteSpaceAndLineEnds) {
  for (const char* space :
       {" ", "\t", "\n", "\v", "\f", "\r", "\r\n", "\xC2\x85", "\xC2\xA0", "\xE1\x9A\x80",
        "\xE2\x80\x80", "\xE2\x80\x8A", "\xE2\x80\x8B", "\xE2\x80\xA8", "\xE2\x80\xA9",
        "\xE2\x80\xAF", "\xE2\x81\x9F", "\xE3\x80\x80", " \t\xC2\xA0\n"}) {
    EXPECT_EQ(clean(space + "com.example.app"s), "com.example.app");
    EXPECT_EQ(clean("com.example.app"s + space), "com.example.app");
    EXPECT_EQ(clean(space + "com.example.app"s + space), "com.example.app");
    EXPECT_EQ(clean(space), kDropped);
  }
}

TEST(AppIdentifierText, blanksInsideAreKept) {
  EXPECT_EQ(clean("My App"), "My App");
  EXPECT_EQ(clean("My\xC2\xA0"s + "App"), "My\xC2\xA0"s + "App");
}

TEST(AppIdentifierText, emptyIsDropped) {
  EXPECT_EQ(clean(""), kDropped);
}

TEST(AppIdentifierText, upTo255BytesAreKept) {
  EXPECT_EQ(clean(std::string(255, 'a')), std::string(255, 'a'));
  EXPECT_EQ(clean(std::string(256, 'a')), kDropped);
  EXPECT_EQ(clean(std::string(257, 'a')), kDropped);
}

TEST(AppIdentifierText, bytesAreCountedNotCharactersAndOnlyAfterTrimming) {
  std::string text;
  for (int i = 0; i < 127; ++i) text += "\xC3\xA9";
  EXPECT_EQ(clean(text + "a"), text + "a") << "255 bytes";
  EXPECT_EQ(clean(text + "\xC3\xA9"), kDropped) << "256 bytes, 128 characters";
  EXPECT_EQ(clean(std::string(300, ' ') + std::string(255, 'a')), std::string(255, 'a'));
}

TEST(AppIdentifierText, controlsAndFormatCharactersInsideAreRefused) {
  const std::string controls[] = {
      "\0"s,          "\x01",         "\t",           "\n",           "\x1F",
      "\x7F",         "\xC2\x80",     "\xC2\x85",     "\xC2\x9F",     "\xC2\xAD",
      "\xE2\x80\x8B", "\xE2\x80\x8D", "\xE2\x80\xAE", "\xEF\xBB\xBF", "\xF3\xA0\x80\x81"};
  for (const std::string& control : controls) {
    EXPECT_EQ(clean("com.exam" + control + "ple"), kDropped) << testing::PrintToString(control);
  }
  EXPECT_EQ(clean("\x01"s + "com.example"), kDropped) << "no white space, so not trimmed either";
  EXPECT_EQ(clean("\xEF\xBB\xBF"s + "com.example"), kDropped);
}

TEST(AppIdentifierText, neighboursOfControlsAreKept) {
  for (const char* text : {"a~b",
                           "a\xC2\xA1"
                           "b",
                           "a\xC2\xAC"
                           "b",
                           "a\xC2\xAE"
                           "b"}) {
    EXPECT_EQ(clean(text), text);
  }
}

TEST(AppIdentifierText, otherScriptsAreKept) {
  EXPECT_EQ(clean(" приложение "), "приложение");
  EXPECT_EQ(clean("应用😀"), "应用😀");
}

TEST(AppIdentifierText, whatIsNotUtf8IsDropped) {
  EXPECT_EQ(clean("com.example\xFF"), kDropped);
  EXPECT_EQ(clean("\xC3"), kDropped);
  EXPECT_EQ(clean("\xED\xA0\x80"), kDropped);
}

}  // namespace
}  // namespace velotap
