#include "touch_script.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velotap::vm {
namespace {

Statement parsed(std::string_view line) {
  ParsedLine result = parseLine(line);
  EXPECT_EQ(result.error, "") << line;
  EXPECT_TRUE(result.statement) << line;
  return result.statement.value_or(Statement{});
}

std::string refused(std::string_view line) {
  const ParsedLine result = parseLine(line);
  EXPECT_FALSE(result.statement) << line;
  return result.error;
}

TEST(TouchScript, EveryStatementIsUnderstood) {
  const std::vector<std::pair<std::string, Verb>> lines{
      {"ready", Verb::ready},           {"touch 1 -20 30", Verb::touch},
      {"move 1 2 -3", Verb::move},      {"lift 1", Verb::lift},
      {"button 3", Verb::button},       {"motion -1 1", Verb::motion},
      {"wheel -2", Verb::wheel},        {"frame", Verb::frame},
      {"frame 8", Verb::frame},         {"repeat 3 0 0", Verb::repeat},
      {"repeat 3 0 0 9", Verb::repeat}, {"cadence 11 12 1", Verb::cadence},
      {"tremor 4", Verb::tremor},       {"wait 100", Verb::wait},
      {"say hello", Verb::say},         {"mark lift", Verb::mark},
      {"destroy", Verb::destroy},       {"hold", Verb::hold}};
  for (const auto& [line, verb] : lines) EXPECT_EQ(parsed(line).verb, verb) << line;
}

TEST(TouchScript, NumbersAndKeysKeepTheirOrder) {
  const Statement statement = parsed("  touch 8\t-640 180 major=50 pressure=4 # firm");
  EXPECT_EQ(statement.numbers, (std::vector<int>{8, -640, 180}));
  ASSERT_EQ(statement.contact.size(), 2U);
  EXPECT_EQ(statement.contact[0], std::pair(ContactKey::major, 50));
  EXPECT_EQ(statement.contact[1], std::pair(ContactKey::pressure, 4));
}

TEST(TouchScript, LinesThatSayNothingAreNoError) {
  for (const std::string_view line : {"", "   ", "# touch 1 2 3", "\t# x", "\r"}) {
    const ParsedLine result = parseLine(line);
    EXPECT_FALSE(result.statement);
    EXPECT_EQ(result.error, "");
  }
}

TEST(TouchScript, TextOfSayIsKeptWithoutTheBlanksAround) {
  EXPECT_EQ(parsed("say   finished 3  ").text, "finished 3");
  EXPECT_EQ(parsed("say").text, "");
  EXPECT_EQ(parsed("mark last lift").text, "last lift");
}

TEST(TouchScript, MistakesAreNamed) {
  EXPECT_EQ(refused("jump 1"), "unknown statement: jump");
  EXPECT_EQ(refused("touch 1 2"), "touch: wrong number of arguments");
  EXPECT_EQ(refused("touch 1 2 3 4"), "touch: wrong number of arguments");
  EXPECT_EQ(refused("touch 1 2 three"), "not a number: three");
  EXPECT_EQ(refused("touch 1 2 3x"), "not a number: 3x");
  EXPECT_EQ(refused("touch 1 2 3 colour=4"), "unknown key: colour");
  EXPECT_EQ(refused("touch 1 2 3 major="), "not a number: major=");
  EXPECT_EQ(refused("frame 1 2"), "frame: wrong number of arguments");
  EXPECT_EQ(refused("cadence"), "cadence: wrong number of arguments");
  EXPECT_EQ(refused("wait 99999999999"), "not a number: 99999999999");
  EXPECT_EQ(refused("move 1 2 x=3"), "not a number: x=3");
}

TEST(TouchScript, TimesAndCountsAreNotNegative) {
  EXPECT_EQ(parsed("wait 0").numbers, std::vector<int>{0});
  EXPECT_EQ(refused("wait -1"), "wait: negative");
  EXPECT_EQ(refused("frame -1"), "frame: negative");
  EXPECT_EQ(refused("cadence 11 -1"), "cadence: negative");
  EXPECT_EQ(refused("repeat -1 0 0"), "repeat: negative");
  EXPECT_EQ(refused("repeat 1 0 0 -1"), "repeat: negative");
  EXPECT_EQ(parsed("repeat 0 -5 -5").numbers, (std::vector<int>{0, -5, -5}));
}

}  // namespace
}  // namespace velotap::vm
