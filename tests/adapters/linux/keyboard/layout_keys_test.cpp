#include "adapters/linux/keyboard/layout_keys.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <stdexcept>

#include "adapters/linux/keyboard/keymap_compiler.hpp"

namespace velotap {
namespace {

LayoutKeys layout(const char* name, const char* variant = "", std::size_t group = 0) {
  const auto keys = groupAt(
      compileNames({.model = "pc105", .layout = name, .variant = variant, .options = ""}), group);
  if (!keys) throw std::runtime_error(name);
  return *keys;
}

TEST(LayoutKeys, anAmericanKeyboardTypesItsUnshiftedCharacters) {
  const LayoutKeys us = layout("us");
  EXPECT_EQ(us.translate(0), "a");
  EXPECT_EQ(us.translate(33), "[");
  EXPECT_EQ(us.translate(30), "]");
  EXPECT_EQ(us.translate(24), "=");
  EXPECT_EQ(us.translate(27), "-");
  EXPECT_EQ(us.translate(49), " ");
}

TEST(LayoutKeys, keysThatMakeControlCharactersTypeNothing) {
  const LayoutKeys us = layout("us");
  EXPECT_EQ(us.translate(36), std::nullopt) << "return";
  EXPECT_EQ(us.translate(48), std::nullopt) << "tab";
  EXPECT_EQ(us.translate(51), std::nullopt) << "backspace";
  EXPECT_EQ(us.translate(53), std::nullopt) << "escape";
}

TEST(LayoutKeys, modifiersAndAbsentKeysTypeNothing) {
  const LayoutKeys us = layout("us");
  for (const std::uint16_t code : std::initializer_list<std::uint16_t>{
           52, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 0xffff}) {
    EXPECT_EQ(us.translate(code), std::nullopt) << code;
  }
}

TEST(LayoutKeys, aDeadKeyTypesNothingByItself) {
  EXPECT_EQ(layout("de").translate(24), std::nullopt);
}

TEST(LayoutKeys, charactersBeyondAsciiAreUtf8) {
  EXPECT_EQ(layout("de").translate(33), "ü");
  EXPECT_EQ(layout("bg").translate(33), "ц");
}

TEST(LayoutKeys, aGermanKeyboardTypesPlusWhereForwardFallsBackTo) {
  EXPECT_EQ(layout("de").translate(30), "+");
}

TEST(LayoutKeys, mutePositionsStandInForBracketsThatALayoutLacks) {
  const LayoutKeys de = layout("de");
  EXPECT_EQ(de.translate(60), "[");
  EXPECT_EQ(de.translate(61), "]");
  EXPECT_EQ(de.translate(62), std::nullopt) << "the layout types +";
  EXPECT_EQ(de.translate(63), std::nullopt) << "the layout types -";
}

TEST(LayoutKeys, aMutePositionStandsInForEqualOnlyWhereNeitherEqualNorPlusIsTyped) {
  EXPECT_EQ(layout("tr").translate(62), "=");
  EXPECT_EQ(layout("es").translate(62), std::nullopt);
  EXPECT_EQ(layout("us").translate(62), std::nullopt);
}

TEST(LayoutKeys, theSecondGroupOfAKeymapIsTheSecondLayout) {
  EXPECT_EQ(layout("us,de", ",", 1).translate(33), "ü");
  EXPECT_EQ(layout("us,de", ",", 0).translate(33), "[");
}

TEST(LayoutKeys, aGroupBeyondTheLastWrapsAround) {
  EXPECT_EQ(layout("us,de", ",", 3).translate(33), "ü");
  EXPECT_EQ(layout("us", "", 5).translate(33), "[");
}

TEST(LayoutKeys, aVariantCounts) {
  EXPECT_EQ(layout("us", "dvorak").translate(27), "[");
}

TEST(KeymapCompiler, namesThatNobodyKnowsGiveNothing) {
  EXPECT_TRUE(
      compileNames({.model = "pc105", .layout = "no-such", .variant = "", .options = ""}).empty());
  EXPECT_TRUE(compileNames({.model = "pc105", .layout = "de", .variant = "no-such", .options = ""})
                  .empty());
  EXPECT_FALSE(groupAt({}, 0));
}

TEST(KeymapCompiler, namesThatAreLeftOutAreTheSystemsDefault) {
  EXPECT_EQ(compileNames({.model = "", .layout = "fr", .variant = "", .options = ""}).at(0),
            layout("fr"));
}

TEST(KeymapCompiler, textThatIsNoKeymapGivesNothing) {
  EXPECT_TRUE(compileText("").empty());
  EXPECT_TRUE(compileText("xkb_keymap { broken").empty());
  EXPECT_TRUE(compileText(std::string_view("\0\0\0\0", 4)).empty());
}

TEST(KeymapCompiler, aKeymapsTextTypesWhatItsNamesDo) {
  const XkbContext context = makeQuietContext();
  const xkb_rule_names names = {
      .rules = "evdev", .model = "pc105", .layout = "us,fr", .variant = ",", .options = ""};
  const XkbKeymap keymap(
      xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
  const std::unique_ptr<char, decltype(&std::free)> text(
      xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1), &std::free);
  EXPECT_EQ(compileText(text.get()), (LayoutGroups{layout("us"), layout("fr")}));
}

}  // namespace
}  // namespace velotap
